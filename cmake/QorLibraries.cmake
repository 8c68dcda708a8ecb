# SPDX-License-Identifier: Apache-2.0
# Every source is compiled once, into an object library. The shared libraries and the command are linked from
# these objects, and so are the tests, which can thereby reach what is not exported.

find_package(fmt REQUIRED)
find_package(EXPAT REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(YAML REQUIRED IMPORTED_TARGET yaml-0.1)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
set(QOR_EMBEDDED_NEEDS fmt::fmt EXPAT::EXPAT nlohmann_json::nlohmann_json PkgConfig::YAML PkgConfig::SQLITE
                       PkgConfig::SODIUM)

function(qor_objects name)
    add_library(${name} OBJECT ${ARGN})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

qor_objects(qor-core-objects ${QOR_CORE_SOURCES})
qor_objects(qor-embedded-objects ${QOR_EMBEDDED_SOURCES})
target_link_libraries(qor-embedded-objects PUBLIC ${QOR_EMBEDDED_NEEDS})
qor_objects(qor-cli-objects ${QOR_CLI_SOURCES})
target_link_libraries(qor-cli-objects PUBLIC fmt::fmt)
target_compile_definitions(qor-cli-objects PRIVATE QOR_VERSION="${PROJECT_VERSION}")

function(qor_shared name output)
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${output} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE CXX
        INSTALL_RPATH "$ORIGIN" LINK_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/exports.map)
    target_include_directories(${name} INTERFACE
        $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qor>)
    target_compile_features(${name} INTERFACE cxx_std_20)
    # Watchers and the host's objects outlive any dlclose: the library stays once it is in.
    target_link_options(${name} PRIVATE
        LINKER:-z,nodelete LINKER:--no-undefined LINKER:--version-script=${CMAKE_SOURCE_DIR}/cmake/exports.map)
endfunction()

if(QOR_SHARED)
    add_library(qor SHARED $<TARGET_OBJECTS:qor-core-objects>)
    qor_shared(qor qor)
    add_library(qor::qor ALIAS qor)

    add_library(qor-embedded SHARED $<TARGET_OBJECTS:qor-embedded-objects>)
    qor_shared(qor-embedded qor-embedded)
    set_target_properties(qor-embedded PROPERTIES EXPORT_NAME embedded)
    target_link_libraries(qor-embedded PUBLIC qor PRIVATE ${QOR_EMBEDDED_NEEDS})
    add_library(qor::embedded ALIAS qor-embedded)

    find_package(CLI11 REQUIRED)
    add_executable(qor-command ${QOR_CLI_MAIN})
    # CLI11 is heavy for the optimizer and of no weight at run time.
    set_source_files_properties(${QOR_CLI_MAIN} PROPERTIES COMPILE_OPTIONS -O0)
    set_target_properties(qor-command PROPERTIES
        OUTPUT_NAME qor INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    target_compile_definitions(qor-command PRIVATE QOR_VERSION="${PROJECT_VERSION}")
    target_link_libraries(qor-command PRIVATE qor qor-embedded qor-cli-objects CLI11::CLI11 fmt::fmt)

    # The command finds its method libraries at ../share/qor/libraries, built or installed.
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share/qor)
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/libraries ${CMAKE_BINARY_DIR}/share/qor/libraries SYMBOLIC)
endif()
