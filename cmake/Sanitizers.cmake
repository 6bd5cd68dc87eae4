if(CADREL_SANITIZE)
  add_compile_options(-fsanitize=${CADREL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${CADREL_SANITIZE})
endif()
# The fuzzers learn from coverage, so the libraries they drive need the
# instrumentation too, not only the fuzzer programs.
if(CADREL_BUILD_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
