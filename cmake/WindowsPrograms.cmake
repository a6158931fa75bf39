# What Windows shows of a program: version, icon, manifest (share/windows/program.rc.in).
enable_language(RC)


# Which program is called what, and the drawing that is its icon.
function(loader_windows_program PROGRAM DESCRIPTION drawing)
  set(MANIFEST ${PROJECT_SOURCE_DIR}/share/windows/program.manifest)
  set(ICON ${PROJECT_BINARY_DIR}/ico/${PROGRAM}.ico)
  set(script ${PROJECT_BINARY_DIR}/ico/${PROGRAM}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/share/windows/program.rc.in ${script} @ONLY)
  loader_ico(${drawing} ${PROJECT_BINARY_DIR}/ico/${PROGRAM})
  add_custom_target(${PROGRAM}_ico DEPENDS ${ICON})
  add_dependencies(${PROGRAM} ${PROGRAM}_ico)
  target_sources(${PROGRAM} PRIVATE ${script})
  set_source_files_properties(${script} TARGET_DIRECTORY ${PROGRAM} PROPERTIES OBJECT_DEPENDS "${MANIFEST}")
endfunction()
loader_windows_program(parameter-loader "Parameter Loader" ${PROJECT_SOURCE_DIR}/qt/icons/loader)
loader_windows_program(paramtool "Parameter Loader, command line" ${PROJECT_SOURCE_DIR}/qt/icons/loader)
loader_windows_program(recorder-sim "Simulated recorder" ${PROJECT_SOURCE_DIR}/qt/icons/loader)
# The window alone has no console.
set_target_properties(parameter-loader PROPERTIES WIN32_EXECUTABLE ON)

loader_ico(${PROJECT_SOURCE_DIR}/share/icons/parameter-file ${PROJECT_BINARY_DIR}/ico/parameter-file)
add_custom_target(parameter-file_ico ALL DEPENDS ${PROJECT_BINARY_DIR}/ico/parameter-file.ico)
