if(CADREL_SANITIZE)
  add_compile_options(-fsanitize=${CADREL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${CADREL_SANITIZE})
endif()
