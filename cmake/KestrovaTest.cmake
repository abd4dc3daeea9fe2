# SPDX-License-Identifier: GPL-3.0-or-later
# kestrova_add_test(<name> SOURCES <files>... LIBS <targets>... [LABELS <labels>...]): one Qt Test program.
function(kestrova_add_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE kestrova_options Qt5::Test ${ARG_LIBS})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        LABELS "${ARG_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.qpa.*=false")
endfunction()
