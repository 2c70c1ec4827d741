# The tests of one room:
#
#   tolvan_tests(<name> SOURCES <file>... [LINKS <target>...]
#                [NATIVE_SOURCES <file>...] [NATIVE_LINKS <target>...] [WHOLE])
#
# On Linux they are one program, test_<name>, and every test of it is one ctest entry with 120 seconds. For Windows the
# tests of all rooms are one program, test_tolvan, so that it is seen that the portable rooms link together; tests that
# need a provider of the Linux build go to NATIVE_SOURCES, what they link to NATIVE_LINKS, and both are left out there.
# With WHOLE the program is one ctest entry: for tests that share a server, which is started once for each process.
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  # Debian has the sources only; they are compiled by the same compiler as the tests.
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  add_executable(test_tolvan)
  target_include_directories(test_tolvan PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(test_tolvan PRIVATE tolvan_house GTest::gmock GTest::gtest GTest::gtest_main)
else()
  include(GoogleTest)
  find_package(GTest REQUIRED)
endif()

# Debian's own interpreter, whatever comes first in PATH: it is the one that sees the Debian packages of modules.
set(TOLVAN_PYTHON /usr/bin/python3)

function(tolvan_tests name)
  cmake_parse_arguments(TESTS "WHOLE" "" "SOURCES;LINKS;NATIVE_SOURCES;NATIVE_LINKS" ${ARGN})
  if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
    list(TRANSFORM TESTS_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(test_tolvan PRIVATE ${TESTS_SOURCES})
    target_link_libraries(test_tolvan PRIVATE ${TESTS_LINKS})
    return()
  endif()
  add_executable(test_${name} ${TESTS_SOURCES} ${TESTS_NATIVE_SOURCES})
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE
    tolvan_house ${TESTS_LINKS} ${TESTS_NATIVE_LINKS} GTest::gmock GTest::gtest GTest::gtest_main)
  if(TESTS_WHOLE)
    add_test(NAME ${name}.all COMMAND test_${name})
    set_tests_properties(${name}.all PROPERTIES TIMEOUT 300)
    return()
  endif()
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
