# There is no SVG module in the Qt for Windows: the drawings become pictures when the program is built, by the tool that
# the Linux build has for them. The result: window_icons, the program's own pictures as a resource of Qt; and
# loader_ico(), an icon file of one drawing.
find_program(LOADER_ICONS icons PATHS ${PROJECT_SOURCE_DIR}/build/release/bin NO_DEFAULT_PATH REQUIRED
             DOC "The tool of the Linux build: cmake --build --preset release --target icons")
find_program(ICOTOOL icotool REQUIRED)

# What qt/SystemWindows.cpp looks for: the sizes of the forms at 100 to 500 %.
set(window_icon_sizes 16 20 24 28 32 36 40 48 56 64 72 80 96 128 256)
set(window_icon_folder ${CMAKE_BINARY_DIR}/window-icons)
set(window_icons ${window_icon_folder}/icons.qrc)
set(pictures)
set(rows)
foreach(name copy help loader more open paste)
  set(made)
  foreach(size IN LISTS window_icon_sizes)
    list(APPEND made ${window_icon_folder}/${size}x${size}/${name}.png)
    string(APPEND rows "  <file>${size}x${size}/${name}.png</file>\n")
  endforeach()
  add_custom_command(OUTPUT ${made}
    COMMAND ${LOADER_ICONS} ${PROJECT_SOURCE_DIR}/qt/icons/${name}.svg ${name} ${window_icon_folder} ${window_icon_sizes}
    DEPENDS ${PROJECT_SOURCE_DIR}/qt/icons/${name}.svg VERBATIM)
  list(APPEND pictures ${made})
endforeach()
file(CONFIGURE OUTPUT ${window_icons} CONTENT "<RCC><qresource prefix=\"/icons\">\n${rows}</qresource></RCC>\n")
set_source_files_properties(${window_icons} PROPERTIES OBJECT_DEPENDS "${pictures}")
add_custom_target(window_icon_pictures DEPENDS ${pictures})

# loader_ico(DRAWING OUTPUT): DRAWING.svg as OUTPUT.ico in the sizes that Windows shows.
function(loader_ico drawing output)
  set(sizes 16 20 24 32 40 48 64 256)
  get_filename_component(name ${output} NAME)
  set(made)
  foreach(size IN LISTS sizes)
    list(APPEND made ${CMAKE_BINARY_DIR}/ico/${size}x${size}/${name}.png)
  endforeach()
  add_custom_command(OUTPUT ${output}.ico
    COMMAND ${LOADER_ICONS} ${drawing}.svg ${name} ${CMAKE_BINARY_DIR}/ico ${sizes}
    COMMAND ${ICOTOOL} --create --output=${output}.ico ${made}
    DEPENDS ${drawing}.svg VERBATIM)
endfunction()
