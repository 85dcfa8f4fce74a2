# AddressSanitizer + UndefinedBehaviorSanitizer for every target when KELAZ_SANITIZE is on.
if(KELAZ_SANITIZE)
  set(_kelaz_san -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_compile_options(${_kelaz_san})
  add_link_options(${_kelaz_san})
endif()
