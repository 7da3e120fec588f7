# Build helpers: every engine folder is one library made of the sources it holds.
include(GoogleTest)

function(galeris_library name dir)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${dir}/*.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARGN})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ARGN})
  endif()
endfunction()

# One GoogleTest executable per test folder; each test runs with a scratch TMPDIR and home of
# its own, set by the executable itself (ctest's per-test environment does not survive test
# discovery).
function(galeris_gtest name dir)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${dir}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources} ${CMAKE_SOURCE_DIR}/tests/support/test_environment.cpp)
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest GTest::gtest_main galeris_testsupport)
  set(scratch ${CMAKE_BINARY_DIR}/scratch/${name})
  file(MAKE_DIRECTORY ${scratch})
  target_compile_definitions(${name} PRIVATE
    GALERIS_TEST_SCRATCH="${scratch}"
    GALERIS_TEST_HOME="${CMAKE_BINARY_DIR}/bin"
    GALERIS_TEST_SOURCE="${CMAKE_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()
