# Tests of decoder-taglib, and of both libraries as the program loads them.
if(NOT TARGET decoder_taglib_core)
  return()
endif()

# All build trees share the library that ./run shows as well. The script knows
# by a stamp that there is nothing to do, and waits for another at its work.
set(sample_library ${PROJECT_SOURCE_DIR}/build/sample-library)
add_test(NAME ${test_prefix}sample_library
  COMMAND ${PROJECT_SOURCE_DIR}/scripts/make-sample-library.sh ${sample_library})
set_tests_properties(${test_prefix}sample_library PROPERTIES
  FIXTURES_SETUP sample_library TIMEOUT 300)

add_executable(decoder_taglib_tests
  ${COMPANION_TEST_SOURCES}
  taglib_corpus_test.cpp
  taglib_exports_test.cpp
  taglib_facts_test.cpp
  taglib_frames_test.cpp
  taglib_limits_test.cpp
  taglib_rating_test.cpp
  taglib_tags_test.cpp)
target_include_directories(decoder_taglib_tests PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(decoder_taglib_tests PRIVATE
  TEST_SAMPLE_LIBRARY="${sample_library}"
  TAGLIB_TEST_DATA="${TAGLIB_TEST_DATA}")
target_link_libraries(decoder_taglib_tests PRIVATE
  decoder_taglib_core ZLIB::ZLIB gmock project_warnings)
register_tests(decoder_taglib_tests FIXTURES_REQUIRED sample_library)

if(WIN32)
  test_exports(decoder_taglib)
  add_executable(decoder_libraries_tests
    ${CMAKE_SOURCE_DIR}/tests/support/main.cpp
    decoder_libraries_test.cpp)
  target_include_directories(decoder_libraries_tests PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(decoder_libraries_tests PRIVATE
    TEST_SAMPLE_LIBRARY="${sample_library}"
    TEST_PCM_LIBRARY="$<TARGET_FILE:decoder_pcm>"
    TEST_TAGLIB_LIBRARY="$<TARGET_FILE:decoder_taglib>")
  target_link_libraries(decoder_libraries_tests PRIVATE gmock psapi project_warnings)
  add_dependencies(decoder_libraries_tests decoder_pcm decoder_taglib)
  register_tests(decoder_libraries_tests FIXTURES_REQUIRED sample_library)

  # What a list shows of real files, held against another program's word.
  set(compare ${CMAKE_CURRENT_SOURCE_DIR}/compare_with_ffprobe.py)
  add_test(NAME ${test_prefix}compare_with_ffprobe.self_test
    COMMAND python3 ${compare} --self-test)
  add_test(NAME ${test_prefix}compare_with_ffprobe
    COMMAND python3 ${compare} $<TARGET_FILE:inspect> ${sample_library}
      ${CMAKE_CROSSCOMPILING_EMULATOR})
  set_tests_properties(${test_prefix}compare_with_ffprobe PROPERTIES
    FIXTURES_REQUIRED sample_library RESOURCE_LOCK prefix TIMEOUT 120)
endif()
