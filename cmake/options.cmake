# Compiler settings that every target of the project shares.

if(KIVO_WARNINGS_AS_ERRORS)
  add_compile_options(-Wall -Wextra -Wpedantic -Werror)
endif()

if(KIVO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# The search for inputs follows what it sees of the library, so the library counts its edges too,
# not the drivers alone.
if(KIVO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Reads the headers that most sources include once for all sources of a target, with those named:
# half of the time that the program takes to compile went into them. clang-tidy reads each source
# without, so that none can lack an include.
function(kivo_precompile target)
  target_precompile_headers(${target} PRIVATE <algorithm> <cstddef> <cstdint> <functional> <map>
                            <memory> <optional> <set> <string> <string_view> <utility> <vector>
                            ${ARGN})
endfunction()
