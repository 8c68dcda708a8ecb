# SPDX-License-Identifier: Apache-2.0
# One benchmark program per file below bench/; bench/run runs them all and prints a table.

find_package(benchmark REQUIRED)
file(GLOB QOR_BENCH_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/bench/*.cpp)
foreach(source IN LISTS QOR_BENCH_SOURCES)
    cmake_path(GET source STEM name)
    add_executable(bench-${name} ${source})
    target_include_directories(bench-${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(bench-${name} PRIVATE qor-core-objects qor-embedded-objects benchmark::benchmark_main)
endforeach()
