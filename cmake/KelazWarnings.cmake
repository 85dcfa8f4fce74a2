# Strict warnings for the project's own targets; CI turns them into errors.
add_library(kelaz_warnings INTERFACE)
target_compile_options(kelaz_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow=local
                                                -Wnon-virtual-dtor -Wformat=2)
# GCC 12 reports std::string concatenation as overlapping memcpy once optimised (its bug 105329).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(kelaz_warnings INTERFACE -Wno-restrict)
endif()
if(KELAZ_WERROR)
  target_compile_options(kelaz_warnings INTERFACE -Werror)
endif()
