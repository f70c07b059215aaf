# What makes a program one of Windows: icon, version and manifest.
enable_language(RC)

# One icon file of all sizes.
find_program(KALVO_CONVERT convert REQUIRED)
set(KALVO_ICON ${PROJECT_BINARY_DIR}/kalvo-horizon.ico)
set(pictures)
foreach(size 16 24 32 48 64 128 256)
  list(APPEND pictures ${PROJECT_SOURCE_DIR}/data/icons/kalvo-horizon-${size}.png)
endforeach()
execute_process(COMMAND ${KALVO_CONVERT} ${pictures} ${KALVO_ICON} COMMAND_ERROR_IS_FATAL ANY)
set(KALVO_MANIFEST ${PROJECT_BINARY_DIR}/kalvo-horizon.manifest)
configure_file(${PROJECT_SOURCE_DIR}/app/windows/kalvo-horizon.manifest.in ${KALVO_MANIFEST} @ONLY)

# kalvo_windows_resources(NAME FILE DESCRIPTION): writes NAME.rc into the build folder; FILE is
# what the program is called there, DESCRIPTION what the system says of it.
function(kalvo_windows_resources name file description)
  configure_file(${PROJECT_SOURCE_DIR}/app/windows/kalvo-horizon.rc.in
    ${PROJECT_BINARY_DIR}/${name}.rc @ONLY)
endfunction()

# kalvo_windows_program(NAME FILE DESCRIPTION): the same, for a target of this tree.
function(kalvo_windows_program name file description)
  kalvo_windows_resources(${name} ${file} ${description})
  target_sources(${name} PRIVATE ${PROJECT_BINARY_DIR}/${name}.rc)
endfunction()

# kalvo_windows_desktop(NAME): no console; the toolkit's plugins and its French texts
# inside the one executable.
function(kalvo_windows_desktop name)
  set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  qt_import_plugins(${name}
    INCLUDE Qt6::QWindowsIntegrationPlugin Qt6::QWindowsVistaStylePlugin
    EXCLUDE_BY_TYPE imageformats)
  qt_add_resources(${name} toolkit_texts PREFIX /translations BASE /usr/share/qt6/translations
    FILES /usr/share/qt6/translations/qtbase_fr.qm)
  qt_add_resources(${name} toolkit_paths PREFIX /qt/etc BASE ${PROJECT_SOURCE_DIR}/app/windows
    FILES ${PROJECT_SOURCE_DIR}/app/windows/qt.conf)
endfunction()
