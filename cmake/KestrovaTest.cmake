# SPDX-License-Identifier: GPL-3.0-or-later
# kestrova_add_test(<name> SOURCES <files>... LIBS <targets>... [LABELS <labels>...] [DISPLAY]): one Qt Test program.
# With DISPLAY it runs on an X server of its own and, as it then takes real time, alone.
find_package(Qt5 5.15 REQUIRED COMPONENTS Test)

function(kestrova_add_test name)
    cmake_parse_arguments(ARG "DISPLAY" "" "SOURCES;LIBS;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
    target_link_libraries(${name} PRIVATE kestrova_options Qt5::Test ${ARG_LIBS})
    if(ARG_DISPLAY)
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/with-display.sh $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    set_tests_properties(${name} PROPERTIES
        LABELS "${ARG_LABELS}"
        RUN_SERIAL "${ARG_DISPLAY}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.qpa.*=false")
endfunction()
