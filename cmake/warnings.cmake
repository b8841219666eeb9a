# Every target of ours links project_warnings; a warning is an error.
add_library(project_warnings INTERFACE)
target_compile_options(project_warnings INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall>
  $<$<COMPILE_LANGUAGE:CXX>:-Wextra>
  $<$<COMPILE_LANGUAGE:CXX>:-Werror>
  $<$<COMPILE_LANGUAGE:CXX>:-Wpedantic>
  $<$<COMPILE_LANGUAGE:CXX>:-Wshadow>
  $<$<COMPILE_LANGUAGE:CXX>:-Wconversion>
  $<$<COMPILE_LANGUAGE:CXX>:-Wsign-conversion>
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
  $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
  $<$<COMPILE_LANGUAGE:CXX>:-Wformat=2>
  $<$<COMPILE_LANGUAGE:CXX>:-Wimplicit-fallthrough>
  $<$<COMPILE_LANGUAGE:CXX>:-Wundef>)
