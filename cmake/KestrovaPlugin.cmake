# SPDX-License-Identifier: GPL-3.0-or-later
# kestrova_add_plugin(<name> <sources>...): a loadable module that exports nothing but the two functions of a Qt
# plug-in and may include of the host only its public headers. In this tree and, with the installed package, outside.
set(KESTROVA_PLUGIN_EXPORTS ${CMAKE_CURRENT_LIST_DIR}/plugin-exports.map)

function(kestrova_add_plugin name)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE Kestrova::vnCore Kestrova::vnCoreGui)
    if(TARGET kestrova_options)
        target_link_libraries(${name} PRIVATE kestrova_options)
    endif()
    target_link_options(${name} PRIVATE -Wl,--version-script=${KESTROVA_PLUGIN_EXPORTS} -Wl,--no-undefined)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        LINK_DEPENDS ${KESTROVA_PLUGIN_EXPORTS}
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib/kestrova/plugins
        INSTALL_RPATH "$ORIGIN/../..")
endfunction()
