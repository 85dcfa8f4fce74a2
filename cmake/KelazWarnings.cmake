# Strict warnings for the project's own targets; CI turns them into errors.
add_library(kelaz_warnings INTERFACE)
target_compile_options(kelaz_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow=local
                                                -Wnon-virtual-dtor -Wformat=2)
if(KELAZ_WERROR)
  target_compile_options(kelaz_warnings INTERFACE -Werror)
endif()
