# SPDX-License-Identifier: Apache-2.0
# One test program per folder below tests/. They link the objects, not the shared libraries, so that they can reach
# internals and that there is one copy of every global. tests/shared is the exception: it sees what a host sees.
# tests/support holds what several programs use; tests/consume is a project of its own.

find_package(GTest)
find_package(rapidcheck)
if(NOT GTest_FOUND OR NOT rapidcheck_FOUND)
    message(STATUS "GoogleTest or RapidCheck is missing: no tests are built (./test installs them)")
    return()
endif()
include(GoogleTest)

function(qor_test_flags target)
    target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/src)
    target_compile_definitions(${target} PRIVATE QOR_SOURCE_DIR="${CMAKE_SOURCE_DIR}" QOR_BINARY_DIR="${CMAKE_BINARY_DIR}")
    target_compile_options(${target} PRIVATE -O1 -g1)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -fpch-preprocess)
        # GCC 12 takes the insides of std::function for uninitialized when sanitizers stand in between.
        if(QOR_SANITIZE)
            target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        endif()
    else()
        target_compile_options(${target} PRIVATE -Wno-gnu-zero-variadic-macro-arguments)
    endif()
    # Programs and objects must agree on position independence, or they cannot share the precompiled header.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_link_libraries(${target} PRIVATE GTest::gmock GTest::gtest rapidcheck)
endfunction()

file(GLOB_RECURSE QOR_TEST_SUPPORT CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/*.cpp)
add_library(qor-test-support OBJECT ${QOR_TEST_SUPPORT})
qor_test_flags(qor-test-support)
target_precompile_headers(qor-test-support PRIVATE
    <gmock/gmock.h> <gtest/gtest.h>
    <array> <cstdint> <filesystem> <fstream> <functional> <map> <memory> <set> <span> <sstream> <string> <string_view>
    <tuple> <vector>)

file(GLOB QOR_TEST_FOLDERS CONFIGURE_DEPENDS LIST_DIRECTORIES true ${CMAKE_SOURCE_DIR}/tests/*)
foreach(path IN LISTS QOR_TEST_FOLDERS)
    cmake_path(GET path FILENAME folder)
    if(NOT IS_DIRECTORY ${path} OR folder STREQUAL "support" OR folder STREQUAL "consume")
        continue()
    endif()
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${path}/*.cpp)
    if(NOT sources OR (folder STREQUAL "shared" AND NOT TARGET qor-embedded))
        continue()
    endif()

    set(target test-${folder})
    add_executable(${target} ${sources})
    qor_test_flags(${target})
    target_precompile_headers(${target} REUSE_FROM qor-test-support)
    target_link_libraries(${target} PRIVATE GTest::gtest_main)
    if(folder STREQUAL "shared")
        target_link_libraries(${target} PRIVATE qor qor-embedded)
    else()
        target_link_libraries(${target} PRIVATE qor-core-objects qor-embedded-objects qor-test-support)
        if(folder STREQUAL "cli")
            target_link_libraries(${target} PRIVATE qor-cli-objects)
        endif()
    endif()
    if(TARGET qor-command)
        add_dependencies(${target} qor-command)
    endif()
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST TEST_PREFIX "${folder}." PROPERTIES TIMEOUT 120)
endforeach()
