# Gives the target TagLib::tag: TagLib 2, static where this file builds it.
#
# TagLib is never part of the tree. An installed one is taken where there is
# one for the target system; otherwise the pinned source archive is fetched
# (scripts/fetch-taglib.sh) and built once into build/deps, in a folder named
# after everything that the result depends on. A build with sanitizers always
# builds its own, so that faults inside TagLib are seen too.
#
# Sets TAGLIB_TEST_DATA to the folder of TagLib's own test files, for the
# robustness tests; empty when an installed TagLib is in use, unless
# -DTAGLIB_TEST_DATA=... names it.
include_guard(GLOBAL)

set(taglib_release 2.0.2)
get_filename_component(taglib_root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(taglib_deps "${taglib_root}/build/deps")

# TagLib's exported target names ZLIB::ZLIB without looking for it, and for
# Windows the import library of zlib1.dll would win over libz.a.
if(CMAKE_CROSSCOMPILING)
  set(ZLIB_USE_STATIC_LIBS ON)
endif()
find_package(ZLIB REQUIRED)
# Whoever links TagLib from another folder needs to see it too.
set_target_properties(ZLIB::ZLIB PROPERTIES IMPORTED_GLOBAL TRUE)

# The sanitizer flags that this directory's targets are compiled with.
function(taglib_sanitizer_flags result)
  get_directory_property(options COMPILE_OPTIONS)
  separate_arguments(words NATIVE_COMMAND "${CMAKE_CXX_FLAGS}")
  set(flags "")
  foreach(option IN LISTS options words)
    if(option MATCHES "^-f(no-)?sanitize|^-fno-omit-frame-pointer$")
      list(APPEND flags "${option}")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES flags)
  list(JOIN flags " " flags)
  set(${result} "${flags}" PARENT_SCOPE)
endfunction()

# Runs one step, its output in a log; a failure ends the configuration with
# the log's last lines.
function(taglib_run what log)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status
                  OUTPUT_FILE "${log}" ERROR_FILE "${log}")
  if(NOT status EQUAL 0)
    set(tail "")
    if(EXISTS "${log}")
      file(STRINGS "${log}" lines)
      list(LENGTH lines count)
      math(EXPR from "${count} > 30 ? ${count} - 30 : 0")
      list(SUBLIST lines ${from} -1 lines)
      list(JOIN lines "\n  " tail)
    endif()
    message(FATAL_ERROR "TagLib ${taglib_release}: ${what} failed (${status}). "
                        "The whole log: ${log}\n  ${tail}")
  endif()
endfunction()

# Fetches the archive and unpacks it, once for all builds.
function(taglib_get_source result)
  set(source "${taglib_deps}/taglib-${taglib_release}")
  if(NOT EXISTS "${source}/CMakeLists.txt")
    execute_process(COMMAND "${taglib_root}/scripts/fetch-taglib.sh" "${taglib_deps}/download"
                    RESULT_VARIABLE status OUTPUT_VARIABLE archive ERROR_VARIABLE messages
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT status EQUAL 0)
      message(FATAL_ERROR "TagLib ${taglib_release} could not be fetched:\n${messages}")
    endif()
    # Unpacked beside its place and renamed: an interrupted run leaves no half.
    set(unpacked "${taglib_deps}/unpacking")
    file(REMOVE_RECURSE "${unpacked}" "${source}")
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${unpacked}")
    file(RENAME "${unpacked}/taglib-${taglib_release}" "${source}")
    file(REMOVE_RECURSE "${unpacked}")
  endif()
  set(${result} "${source}" PARENT_SCOPE)
endfunction()

function(taglib_find_utf8cpp result)
  # Headers only, so that the host's serve the cross build as well.
  find_path(TAGLIB_UTF8CPP_INCLUDE_DIR utf8.h PATH_SUFFIXES utf8cpp
            PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH)
  if(NOT TAGLIB_UTF8CPP_INCLUDE_DIR)
    message(FATAL_ERROR "TagLib ${taglib_release} needs the headers of utf8cpp "
                        "(on Debian the package libutfcpp-dev).")
  endif()
  set(${result} "${TAGLIB_UTF8CPP_INCLUDE_DIR}" PARENT_SCOPE)
endfunction()

# Configures, builds and installs TagLib into `prefix`.
function(taglib_build source prefix flags)
  taglib_find_utf8cpp(utf8cpp)
  set(work "${prefix}.work")
  file(REMOVE_RECURSE "${work}" "${prefix}")
  file(MAKE_DIRECTORY "${work}")
  set(arguments -S "${source}" -B "${work}/build" -G "${CMAKE_GENERATOR}"
    "-DCMAKE_INSTALL_PREFIX=${work}/prefix" -DCMAKE_INSTALL_LIBDIR=lib
    "-DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}" "-DCMAKE_C_COMPILER=${CMAKE_C_COMPILER}"
    -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS=${flags}"
    -DBUILD_SHARED_LIBS=OFF -DBUILD_BINDINGS=OFF -DBUILD_TESTING=OFF -DBUILD_EXAMPLES=OFF
    "-Dutf8cpp_INCLUDE_DIR=${utf8cpp}"
    "-DZLIB_LIBRARY=${ZLIB_LIBRARIES}" "-DZLIB_INCLUDE_DIR=${ZLIB_INCLUDE_DIRS}")
  foreach(name CMAKE_TOOLCHAIN_FILE CMAKE_CXX_COMPILER_LAUNCHER CMAKE_C_COMPILER_LAUNCHER
               CMAKE_MAKE_PROGRAM)
    if(${name})
      list(APPEND arguments "-D${name}=${${name}}")
    endif()
  endforeach()
  cmake_host_system_information(RESULT cores QUERY NUMBER_OF_LOGICAL_CORES)
  message(STATUS "Building TagLib ${taglib_release} once into ${prefix}")
  taglib_run("configuring" "${prefix}.configure.log" "${CMAKE_COMMAND}" ${arguments})
  taglib_run("building" "${prefix}.build.log"
             "${CMAKE_COMMAND}" --build "${work}/build" --parallel ${cores})
  taglib_run("installing" "${prefix}.install.log" "${CMAKE_COMMAND}" --install "${work}/build")
  file(RENAME "${work}/prefix" "${prefix}")
  file(REMOVE_RECURSE "${work}")
endfunction()

# Everything that decides about the built archive, in one folder name.
function(taglib_cache_name result flags)
  string(SHA256 hash "${CMAKE_CXX_COMPILER}|${flags}|${ZLIB_LIBRARIES}")
  string(SUBSTRING "${hash}" 0 12 hash)
  string(TOLOWER "taglib-${taglib_release}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}-${CMAKE_CXX_COMPILER_ID}-${CMAKE_CXX_COMPILER_VERSION}-${hash}" name)
  set(${result} "${name}" PARENT_SCOPE)
endfunction()

# A macro: the imported target must appear in the caller's directory.
macro(taglib_provide)
  taglib_sanitizer_flags(taglib_sanitizers)
  # What an earlier configuration found here is looked at again, not taken as
  # an installed one.
  string(FIND "${taglib_DIR}" "${taglib_deps}/" taglib_own)
  if(taglib_own EQUAL 0)
    unset(taglib_DIR CACHE)
  endif()
  if(taglib_sanitizers STREQUAL "")
    find_package(taglib 2 CONFIG QUIET GLOBAL)
  endif()
  if(TARGET TagLib::tag)
    message(STATUS "TagLib: installed, ${taglib_DIR}")
  elseif(CMAKE_HOST_WIN32)
    message(FATAL_ERROR "TagLib 2 was not found. Install the packages taglib and zlib "
                        "(with vcpkg or MSYS2) and configure again.")
  else()
    set(taglib_flags "-ffunction-sections -fdata-sections")
    if(NOT taglib_sanitizers STREQUAL "")
      # Its ASF reader keeps the type that a file names as an enumerator before
      # it looks at the value: harmless, and in every damaged file.
      string(APPEND taglib_flags " -g -O1 ${taglib_sanitizers} -fno-sanitize=enum")
    endif()
    taglib_cache_name(taglib_name "${taglib_flags}")
    file(MAKE_DIRECTORY "${taglib_deps}")
    # Two configurations at once: the second waits and finds it done.
    file(LOCK "${taglib_deps}/taglib.lock" TIMEOUT 900)
    taglib_get_source(taglib_source)
    if(NOT EXISTS "${taglib_deps}/${taglib_name}/lib/cmake/taglib/taglib-config.cmake")
      taglib_build("${taglib_source}" "${taglib_deps}/${taglib_name}" "${taglib_flags}")
    endif()
    file(LOCK "${taglib_deps}/taglib.lock" RELEASE)
    unset(taglib_DIR CACHE)
    find_package(taglib 2 CONFIG REQUIRED GLOBAL
                 PATHS "${taglib_deps}/${taglib_name}/lib/cmake/taglib"
                 NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    set(TAGLIB_TEST_DATA "${taglib_source}/tests/data" CACHE PATH
        "Folder of TagLib's own test files" FORCE)
    message(STATUS "TagLib: ${taglib_DIR}")
  endif()
  # The exported target does not say so itself, and without it every function
  # would be looked for in a DLL.
  get_target_property(taglib_type TagLib::tag TYPE)
  if(taglib_type STREQUAL "STATIC_LIBRARY")
    set_property(TARGET TagLib::tag APPEND PROPERTY
                 INTERFACE_COMPILE_DEFINITIONS TAGLIB_STATIC)
  endif()
endmacro()

set(TAGLIB_TEST_DATA "" CACHE PATH "Folder of TagLib's own test files")
taglib_provide()
