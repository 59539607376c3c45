# One target a folder, one line a test.

add_library(kvx_options INTERFACE)
target_include_directories(kvx_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
string(TOLOWER ${CMAKE_SYSTEM_NAME} KVX_SYSTEM)
target_compile_options(kvx_options INTERFACE -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion
                                             -Wsign-conversion -Wold-style-cast)
# GCC 12 sees overlapping copies in "text" + std::string that are not there.
target_compile_options(kvx_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(KVX_SANITIZE)
  # Between the sanitizers' own code GCC 12 takes members of variants and functions for uninitialized.
  target_compile_options(kvx_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_compile_options(kvx_options INTERFACE -fsanitize=${KVX_SANITIZE} -fno-omit-frame-pointer
                                               -fno-sanitize-recover=all)
  target_link_options(kvx_options INTERFACE -fsanitize=${KVX_SANITIZE})
endif()

# For modules: whatever they use is in what they are linked to. What clang's sanitizers call is in the program
# alone.
set(KVX_ALL_DEFINED $<$<NOT:$<BOOL:${KVX_FUZZ}>>:-Wl,-z,defs>)

# kvx_library(NAME [RECURSE] DIRS folder... DEPS target...): the static library kvx_NAME of all
# sources in the folders (below src/).
function(kvx_library name)
  cmake_parse_arguments(ARG "RECURSE" "" "DIRS;DEPS" ${ARGN})
  set(sources)
  foreach(dir ${ARG_DIRS})
    if(ARG_RECURSE)
      file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${dir}/*.cpp)
    else()
      file(GLOB found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${dir}/*.cpp)
    endif()
    list(APPEND sources ${found})
  endforeach()
  if(sources)
    add_library(kvx_${name} STATIC ${sources})
    target_link_libraries(kvx_${name} PUBLIC kvx_options ${ARG_DEPS})
  else()
    add_library(kvx_${name} INTERFACE)
    target_link_libraries(kvx_${name} INTERFACE kvx_options ${ARG_DEPS})
  endif()
endfunction()

# kvx_test(NAME DIR folder DEPS target...): one test program of all sources in tests/DIR.
function(kvx_test name)
  cmake_parse_arguments(ARG "" "DIR" "DEPS;ENVIRONMENT" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${ARG_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE kvx_options ${ARG_DEPS} GTest::gmock GTest::gtest_main)
  if(WIN32)
    # It loads the platform library, which lies in the folder of the programs.
    set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  endif()
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "KVX_SOURCE_DIR=${CMAKE_SOURCE_DIR};KVX_BIN_DIR=${CMAKE_BINARY_DIR}/bin;QT_QPA_PLATFORM=offscreen;ASAN_OPTIONS=fast_unwind_on_malloc=0;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0;TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/threads.supp:die_after_fork=0;${ARG_ENVIRONMENT}")
endfunction()

# kvx_windows_binary(TARGET DESCRIPTION): for Windows, the plain name and a version resource; a program
# also says that its texts are UTF-8. Elsewhere nothing.
function(kvx_windows_binary target description)
  if(NOT WIN32)
    return()
  endif()
  set_target_properties(${target} PROPERTIES PREFIX "")
  get_target_property(kind ${target} TYPE)
  set(type VFT_DLL)
  set(file ${target}.dll)
  set(manifest "")
  if(kind STREQUAL "EXECUTABLE")
    set(type VFT_APP)
    set(file ${target}.exe)
    set(manifest "1 24 \"${CMAKE_SOURCE_DIR}/cmake/Program.manifest\"")
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/cmake/Version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
