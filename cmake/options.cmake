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
