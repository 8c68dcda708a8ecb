# SPDX-License-Identifier: Apache-2.0
# Flags that hold for every target: warnings, sanitizers, the compiler cache.

find_program(QOR_CCACHE ccache)
if(QOR_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The sloppiness is what makes precompiled headers cacheable.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${QOR_CCACHE})
endif()

add_compile_options(
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Wextra-semi -Wundef)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wduplicated-cond -Wlogical-op -Wsuggest-override)
else()
    add_compile_options(-Winconsistent-missing-override -Winconsistent-missing-destructor-override)
endif()
if(QOR_WERROR)
    add_compile_options(-Werror)
endif()

if(QOR_SANITIZE)
    add_compile_options(-fsanitize=${QOR_SANITIZE} -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QOR_SANITIZE})
endif()
if(QOR_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "The fuzz targets need clang: cmake --preset fuzz")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
