# What the Windows packages hold: one folder with everything in it. scripts/windows.sh installs it, looks whether a library
# is missing, and makes the zip and the installer of it.
set(LOADER_PROGRAMS parameter-loader paramtool recorder-sim)
install(TARGETS ${LOADER_PROGRAMS} RUNTIME DESTINATION .)
foreach(file IN LISTS LOADER_DATA_FILES)
  install(FILES ${PROJECT_SOURCE_DIR}/data/${file} DESTINATION .)
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/ico/parameter-loader.ico ${PROJECT_BINARY_DIR}/ico/parameter-file.ico DESTINATION .)

# Qt, and what the compiler brings.
foreach(library Core Gui Widgets Network)
  install(FILES $<TARGET_FILE:Qt6::${library}> DESTINATION .)
endforeach()
install(FILES $<TARGET_FILE:Qt6::QWindowsIntegrationPlugin> DESTINATION platforms)
install(FILES $<TARGET_FILE:Qt6::QWindowsVistaStylePlugin> DESTINATION styles)
foreach(library libstdc++-6.dll libgcc_s_seh-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library} OUTPUT_VARIABLE file
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  install(FILES ${file} DESTINATION .)
endforeach()
find_file(LOADER_PTHREAD libwinpthread-1.dll PATHS /usr/x86_64-w64-mingw32/lib NO_DEFAULT_PATH REQUIRED)
install(FILES ${LOADER_PTHREAD} DESTINATION .)
install(FILES /usr/share/qt6/translations/qtbase_ja.qm DESTINATION translations)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/qt.conf
     CONTENT "[Paths]\nPrefix = .\nPlugins = .\nTranslations = translations\n")
install(FILES ${PROJECT_BINARY_DIR}/qt.conf DESTINATION .)

# To read: as pages for the browser, since Windows shows no other form with pictures and links.
find_program(PANDOC pandoc REQUIRED)
include(${CMAKE_CURRENT_LIST_DIR}/Guides.cmake)
list(FILTER LOADER_GUIDES INCLUDE REGEX "\\.md$")
set(pages)
foreach(guide IN LISTS LOADER_GUIDES)
  string(REGEX REPLACE "\\.md$" ".html" page ${guide})
  set(language en)
  if(guide MATCHES "\\.ja\\.md$")
    set(language ja)
  endif()
  get_filename_component(name ${guide} NAME_WE)
  get_filename_component(folder ${page} DIRECTORY)
  add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/guides/${page}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/guides/${folder}
    COMMAND ${PANDOC} --from gfm --to html5 --standalone --metadata pagetitle=${name} --metadata lang=${language}
            --lua-filter ${PROJECT_SOURCE_DIR}/share/windows/guide-links.lua
            --include-in-header ${PROJECT_SOURCE_DIR}/share/windows/guide-style.html
            --output ${PROJECT_BINARY_DIR}/guides/${page} ${PROJECT_SOURCE_DIR}/${guide}
    DEPENDS ${PROJECT_SOURCE_DIR}/${guide} ${PROJECT_SOURCE_DIR}/share/windows/guide-links.lua
            ${PROJECT_SOURCE_DIR}/share/windows/guide-style.html VERBATIM)
  list(APPEND pages ${PROJECT_BINARY_DIR}/guides/${page})
endforeach()
add_custom_target(guides ALL DEPENDS ${pages})
install(DIRECTORY ${PROJECT_BINARY_DIR}/guides/ DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/images DESTINATION docs)

# The licence texts, as the packages give them that the libraries come from.
set(licences qt6-base-dev:Qt mingw-w64-x86-64-dev:mingw-w64 gcc-mingw-w64-x86-64-posix-runtime:gcc-mingw-w64
             libmodbus-dev:libmodbus)
foreach(licence IN LISTS licences)
  string(REPLACE ":" ";" licence ${licence})
  list(GET licence 0 package)
  list(GET licence 1 name)
  install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${name}.txt)
endforeach()
