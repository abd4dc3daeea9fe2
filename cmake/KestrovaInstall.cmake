# SPDX-License-Identifier: GPL-3.0-or-later
# What is installed beside programs, libraries and plug-in (their own CMakeLists do that), the package for those who
# build a plug-in of their own, and the Debian package.
include(CMakePackageConfigHelpers)

set(kestrova_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Kestrova)
set_target_properties(vnCoreHeaders PROPERTIES EXPORT_NAME vnCoreHeaders)
install(TARGETS vnCoreHeaders vnCore vnCoreGui EXPORT KestrovaTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT KestrovaTargets NAMESPACE Kestrova:: DESTINATION ${kestrova_package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KestrovaConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KestrovaConfig.cmake INSTALL_DESTINATION ${kestrova_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KestrovaConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/KestrovaConfig.cmake
    ${PROJECT_BINARY_DIR}/KestrovaConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/KestrovaPlugin.cmake
    ${PROJECT_SOURCE_DIR}/cmake/plugin-exports.map
    DESTINATION ${kestrova_package_dir})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kestrova)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/scenarios DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrova)
install(DIRECTORY packaging/fleet DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrova)
install(FILES docs/man/kestrova.1 docs/man/kestrova-measure.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES packaging/example.kestrova.Kestrova.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/example.kestrova.Kestrova.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/kestrova.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
# The README, and all that it links to.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN man EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrova)
set(CPACK_PACKAGE_VENDOR "Kestrova Imaging")
set(CPACK_PACKAGE_CONTACT "Kestrova Imaging <info@kestrova.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# The texts of Qt itself in other languages.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qttranslations5-l10n)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# Real cameras are a package of their own, so that the other one needs no library for them.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Unspecified)
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_NAME kestrova)
if(TARGET aravisModule)
    list(APPEND CPACK_COMPONENTS_ALL aravis)
    set(CPACK_DEBIAN_ARAVIS_PACKAGE_NAME kestrova-aravis)
    set(CPACK_DEBIAN_ARAVIS_PACKAGE_DEPENDS "kestrova (= ${PROJECT_VERSION})")
    set(CPACK_COMPONENT_ARAVIS_DESCRIPTION "GigE Vision and USB3 Vision cameras for kestrova")
endif()
include(CPack)
