# What an installation holds, and the packages that are made of it.
#
#   cmake --install build/release --prefix DIR          for all users: bin/, share/
#   cpack --config build/release/CPackConfig.cmake      a Debian package and a portable folder, in build/packages
#
# The portable folder is one folder with everything in it, Qt too: cmake/PortableFolder.cmake.
set(CMAKE_INSTALL_DOCDIR share/doc/parameter-loader)
include(GNUInstallDirs)
set(LOADER_PROGRAMS parameter-loader paramtool recorder-sim)
set(LOADER_SHARE ${CMAKE_INSTALL_DATADIR}/parameter-loader)

# $ORIGIN/lib is where the portable folder has its libraries; an installed program loads the system's. The old form of
# the entry holds for what those libraries load in their turn.
set_target_properties(${LOADER_PROGRAMS} PROPERTIES BUILD_RPATH "$ORIGIN/lib" INSTALL_RPATH "")
foreach(program IN LISTS LOADER_PROGRAMS)
  target_link_options(${program} PRIVATE -Wl,--disable-new-dtags)
endforeach()

install(TARGETS ${LOADER_PROGRAMS} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT system)
foreach(file IN LISTS LOADER_DATA_FILES)
  install(FILES ${PROJECT_SOURCE_DIR}/data/${file} DESTINATION ${LOADER_SHARE} COMPONENT system)
endforeach()

# What there is to read, and the units that docs/paramtool.md shows.
set(LOADER_GUIDES README.md README.ja.md CHANGELOG.md CONTRIBUTING.md docs/user-guide.md docs/user-guide.ja.md
                  docs/paramtool.md docs/paramtool.ja.md docs/simulator.md docs/file-formats.md docs/parameters.md
                  docs/register-map.md docs/ports.md docs/licences.md docs/architecture.md docs/performance.md
                  docs/reliability.md
                  share/systemd/paramtool-backup.service share/systemd/paramtool-backup.timer)
foreach(guide IN LISTS LOADER_GUIDES)
  get_filename_component(folder ${guide} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${guide} DESTINATION ${CMAKE_INSTALL_DOCDIR}/${folder} COMPONENT system)
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/images DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT system)

# Made from paramtool's table of commands: tools/manual.
install(FILES ${PROJECT_SOURCE_DIR}/share/man/man1/paramtool.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT system)
install(FILES ${PROJECT_SOURCE_DIR}/share/man/ja/man1/paramtool.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/ja/man1 COMPONENT system)
install(FILES ${PROJECT_SOURCE_DIR}/share/bash-completion/completions/paramtool
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT system)

install(FILES ${PROJECT_SOURCE_DIR}/share/applications/parameter-loader.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT system)
install(FILES ${PROJECT_SOURCE_DIR}/share/mime/parameter-loader.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT system)
install(FILES ${PROJECT_SOURCE_DIR}/share/udev/60-parameter-loader.rules DESTINATION lib/udev/rules.d COMPONENT system)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size IN LISTS ICON_SIZES)
  install(FILES ${ICON_FOLDER}/${size}x${size}/parameter-loader.png DESTINATION ${icons}/${size}x${size}/apps
          COMPONENT system)
  install(FILES ${ICON_FOLDER}/${size}x${size}/parameter-file.png DESTINATION ${icons}/${size}x${size}/mimetypes
          COMPONENT system)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/qt/icons/loader.svg DESTINATION ${icons}/scalable/apps
        RENAME parameter-loader.svg COMPONENT system)
install(FILES ${PROJECT_SOURCE_DIR}/share/icons/parameter-file.svg DESTINATION ${icons}/scalable/mimetypes
        COMPONENT system)

# --- The portable folder: everything in one place. Not part of a plain "cmake --install".
foreach(program IN LISTS LOADER_PROGRAMS)
  install(PROGRAMS $<TARGET_FILE:${program}> DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
endforeach()
foreach(file IN LISTS LOADER_DATA_FILES)
  install(FILES ${PROJECT_SOURCE_DIR}/data/${file} DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
endforeach()
foreach(guide IN LISTS LOADER_GUIDES)
  get_filename_component(folder ${guide} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${guide} DESTINATION ./${folder} COMPONENT portable EXCLUDE_FROM_ALL)
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/images DESTINATION docs COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES ${PROJECT_SOURCE_DIR}/share/udev/60-parameter-loader.rules DESTINATION . COMPONENT portable
        EXCLUDE_FROM_ALL)
get_target_property(qt_core_library Qt6::Core LOCATION)
get_filename_component(qt_library_folder ${qt_core_library} DIRECTORY)
install(CODE "set(qt_plugins \"${qt_library_folder}/qt6/plugins\")
set(programs ${LOADER_PROGRAMS})" COMPONENT portable EXCLUDE_FROM_ALL)
install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/PortableFolder.cmake COMPONENT portable EXCLUDE_FROM_ALL)

# --- Packages
set(CPACK_PACKAGE_NAME parameter-loader)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Parameter Loader")
set(CPACK_PACKAGE_CONTACT "Parameter Loader developers <parameter-loader@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Prepare, inspect and transfer the set-up of a paperless recorder")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/packages)
set(CPACK_PACKAGE_FILE_NAME parameter-loader-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL system portable)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_SYSTEM_PACKAGE_NAME parameter-loader)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no library names: the platform and icon plugins of Qt, and letters for Japanese.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6svg6, fonts-noto-cjk | fonts-japanese-gothic")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageOptions.cmake)
include(CPack)
