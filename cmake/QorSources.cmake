# SPDX-License-Identifier: Apache-2.0
# Which folders make which library. Files are found by themselves: adding one needs no edit here.

set(QOR_CORE_FOLDERS platform frame cardinality simmap modeltools admin simcal)
set(QOR_EMBEDDED_FOLDERS embedded interchange)

function(qor_sources result)
    set(found)
    foreach(folder IN LISTS ARGN)
        file(GLOB_RECURSE files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp)
        list(APPEND found ${files})
    endforeach()
    set(${result} ${found} PARENT_SCOPE)
endfunction()

qor_sources(QOR_CORE_SOURCES ${QOR_CORE_FOLDERS})
qor_sources(QOR_EMBEDDED_SOURCES ${QOR_EMBEDDED_FOLDERS})
qor_sources(QOR_CLI_SOURCES cli)
# Whatever reads the command line.
set(QOR_CLI_MAIN ${QOR_CLI_SOURCES})
list(FILTER QOR_CLI_MAIN INCLUDE REGEX "/(main|Complaint|[A-Za-z]+Arguments)\\.cpp$")
list(REMOVE_ITEM QOR_CLI_SOURCES ${QOR_CLI_MAIN})

# Message catalogues: one .po file per language becomes one constant table.
set(QOR_MESSAGES_DIR ${CMAKE_SOURCE_DIR}/src/embedded/messages)
set(QOR_MESSAGES_CPP ${CMAKE_BINARY_DIR}/generated/MessageTable.cpp)
file(GLOB QOR_CATALOGUES CONFIGURE_DEPENDS ${QOR_MESSAGES_DIR}/*.po)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(QOR_MSGFMT msgfmt REQUIRED)
add_custom_command(
    OUTPUT ${QOR_MESSAGES_CPP}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/cmake/po_to_table.py --msgfmt ${QOR_MSGFMT}
            --placeholders ${QOR_MESSAGES_DIR}/placeholders.txt --output ${QOR_MESSAGES_CPP} ${QOR_CATALOGUES}
    DEPENDS ${QOR_CATALOGUES} ${QOR_MESSAGES_DIR}/placeholders.txt ${CMAKE_SOURCE_DIR}/cmake/po_to_table.py
    COMMENT "Checking and compiling the message catalogues"
    VERBATIM)
list(APPEND QOR_EMBEDDED_SOURCES ${QOR_MESSAGES_CPP})
