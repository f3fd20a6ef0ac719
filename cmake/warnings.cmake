# Warnings on everywhere; never fast-math: the numeric results are fixed to the bit.
add_compile_options(-Wall -Wextra -fno-fast-math)
if(VELK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
