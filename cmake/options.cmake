# Compiler settings that every target of the project shares.

if(KIVO_WARNINGS_AS_ERRORS)
  add_compile_options(-Wall -Wextra -Wpedantic -Werror)
endif()

# What is shipped reads the files of others, and so resists what a fault in it could be used for:
# overwritten return addresses are noticed, calls and jumps land where they may, calls of the C
# library are checked where sizes are known, tables of addresses are read-only. Builds for debugging
# are not shipped, and the sanitizers see more.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
if(KIVO_HARDEN AND NOT KIVO_SANITIZE AND NOT KIVO_FUZZ)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection KIVO_HAS_CF_PROTECTION)
  set(KIVO_HARDENING -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  if(KIVO_HAS_CF_PROTECTION)
    list(APPEND KIVO_HARDENING -fcf-protection)
  endif()
  add_compile_options("$<$<NOT:$<CONFIG:Debug>>:${KIVO_HARDENING}>")
  add_link_options("$<$<NOT:$<CONFIG:Debug>>:-Wl,-z,relro,-z,now,-z,noexecstack>")
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
