# SPDX-License-Identifier: Apache-2.0
# One libFuzzer program per file below fuzz/. fuzz/NAME.dict and fuzz/corpus/NAME/ are taken up by fuzz/run.

file(GLOB QOR_FUZZ_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/fuzz/*.cpp)
foreach(source IN LISTS QOR_FUZZ_SOURCES)
    cmake_path(GET source STEM name)
    add_executable(fuzz-${name} ${source})
    target_include_directories(fuzz-${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
    target_link_options(fuzz-${name} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(fuzz-${name} PRIVATE qor-core-objects qor-embedded-objects)
endforeach()
