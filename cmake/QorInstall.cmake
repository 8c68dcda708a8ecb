# SPDX-License-Identifier: Apache-2.0
# Installation: libraries, command, public headers, method libraries, and the package for find_package(qor).

include(CMakePackageConfigHelpers)

install(TARGETS qor qor-embedded EXPORT qorTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS qor-command RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Which headers are public is found at install time, since it follows from what headers include.
install(CODE "
    execute_process(
        COMMAND \"${Python3_EXECUTABLE}\" \"${CMAKE_SOURCE_DIR}/cmake/public_headers.py\" \"${CMAKE_SOURCE_DIR}/src\"
        OUTPUT_VARIABLE headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE \"\\n\" \";\" headers \"\${headers}\")
    foreach(header IN LISTS headers)
        cmake_path(GET header PARENT_PATH folder)
        file(INSTALL \"${CMAKE_SOURCE_DIR}/src/\${header}\"
             DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}/qor/\${folder}\")
    endforeach()")

file(GLOB QOR_METHOD_LIBRARIES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/libraries/*.yaml)
install(FILES ${QOR_METHOD_LIBRARIES} DESTINATION ${CMAKE_INSTALL_DATADIR}/qor/libraries)

set(QOR_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/qor)
install(EXPORT qorTargets NAMESPACE qor:: DESTINATION ${QOR_PACKAGE_DIR})
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/qorConfig.cmake.in ${CMAKE_BINARY_DIR}/qorConfig.cmake
                              INSTALL_DESTINATION ${QOR_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/qorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/qorConfig.cmake ${CMAKE_BINARY_DIR}/qorConfigVersion.cmake
        DESTINATION ${QOR_PACKAGE_DIR})
