# SPDX-License-Identifier: GPL-3.0-or-later
# kestrova_add_plugin(<name> <sources>...): a loadable module in lib/kestrova/plugins that exports nothing but
# the two plug-in functions and may include of the host only its public headers.
function(kestrova_add_plugin name)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE kestrova_options vnCore vnCoreGui)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib/kestrova/plugins
        INSTALL_RPATH "$ORIGIN/../..")
    target_link_options(${name} PRIVATE
        -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/plugin-exports.map -Wl,--no-undefined)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/plugin-exports.map)
    install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/kestrova/plugins)
endfunction()
