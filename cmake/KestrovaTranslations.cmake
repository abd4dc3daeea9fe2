# SPDX-License-Identifier: GPL-3.0-or-later
# The languages: translations/<part>_<language>.ts, compiled to where the programs look for them beside their own
# folder, in the build as in an installation. After texts have changed, build the target `update-translations`, which
# brings the .ts files up to date, and fill in what is new.
set(kestrova_translated_kestrova host/app host/core host/devices host/gui host/viewer)
set(kestrova_translated_qlpDataThroughputGraph plugins/qlpDataThroughputGraph)

set(kestrova_ts_files)
set(kestrova_update_commands)
foreach(part kestrova qlpDataThroughputGraph)
    set(part_ts_files)
    foreach(language de zh_CN)
        list(APPEND part_ts_files translations/${part}_${language}.ts)
    endforeach()
    list(APPEND kestrova_ts_files ${part_ts_files})
    list(APPEND kestrova_update_commands COMMAND Qt5::lupdate -silent -no-obsolete -locations none
        ${kestrova_translated_${part}} -ts ${part_ts_files})
endforeach()
add_custom_target(update-translations ${kestrova_update_commands} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)

set(kestrova_qm_dir ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_DATADIR}/kestrova/translations)
set_source_files_properties(${kestrova_ts_files} PROPERTIES OUTPUT_LOCATION ${kestrova_qm_dir})
qt5_add_translation(kestrova_qm_files ${kestrova_ts_files})
add_custom_target(translations ALL DEPENDS ${kestrova_qm_files})
install(FILES ${kestrova_qm_files} DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrova/translations)
