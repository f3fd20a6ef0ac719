# Warnings on everywhere; never fast-math: the numeric results are fixed to the bit.
add_compile_options(-Wall -Wextra -fno-fast-math)
if(VELK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VELK_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VELK_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
  endif()
  # Every library is instrumented for coverage; only the fuzz targets link libFuzzer's main.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer
                      -fno-sanitize-recover=undefined -g)
  add_link_options(-fsanitize=address,undefined)
endif()
