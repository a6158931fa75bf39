# Completes the portable folder: the libraries that the programs and Qt's plugins load, the plugins, Qt's Japanese texts,
# and the licences of all of it. What every desktop has (the C library, X11, OpenGL, fonts) is the machine's own: a copy
# of it would not fit the machine's kernel, drivers or configuration.
set(folder "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
set(plugin_folder ${folder}/plugins)
foreach(plugin platforms/libqxcb.so platforms/libqoffscreen.so iconengines/libqsvgicon.so imageformats/libqsvg.so
               platforminputcontexts/libcomposeplatforminputcontextplugin.so
               platforminputcontexts/libibusplatforminputcontextplugin.so
               platforminputcontexts/libfcitx5platforminputcontextplugin.so)
  if(EXISTS ${qt_plugins}/${plugin})
    get_filename_component(kind ${plugin} DIRECTORY)
    file(INSTALL DESTINATION ${plugin_folder}/${kind} TYPE MODULE FILES ${qt_plugins}/${plugin})
  endif()
endforeach()
file(GLOB_RECURSE plugins ${plugin_folder}/*.so)
list(TRANSFORM programs PREPEND ${folder}/)
set(machine "^(ld-linux.*|linux-vdso|lib(udev|c|m|dl|rt|pthread|resolv|util|stdc\\+\\+|gcc_s|GL|GLX|GLdispatch|EGL|OpenGL|X11|X11-xcb|xcb|Xau|Xdmcp|Xext|ICE|SM|fontconfig|freetype|expat|z|uuid|bsd|md|dbus-1|systemd|cap|gcrypt|gpg-error|lzma|lz4|zstd|selinux|drm|gbm|wayland-client|wayland-server))[-.0-9]*\\.so")
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${programs} MODULES ${plugins}
     RESOLVED_DEPENDENCIES_VAR libraries UNRESOLVED_DEPENDENCIES_VAR missing PRE_EXCLUDE_REGEXES ${machine})
if(missing)
  message(FATAL_ERROR "not found for the portable folder: ${missing}")
endif()
file(INSTALL DESTINATION ${folder}/lib TYPE SHARED_LIBRARY FOLLOW_SYMLINK_CHAIN FILES ${libraries})

get_filename_component(qt_libraries ${qt_plugins} DIRECTORY)
file(WRITE ${folder}/qt.conf "[Paths]\nPlugins = plugins\nTranslations = translations\n")
file(GLOB texts /usr/share/qt6/translations/qtbase_ja.qm)
file(INSTALL DESTINATION ${folder}/translations TYPE FILE FILES ${texts})

# The licence texts as the packages that the libraries come from give them.
foreach(library IN LISTS libraries)
  get_filename_component(real ${library} REALPATH)
  set(owner)
  foreach(name ${library} ${real})
    string(REGEX REPLACE "^/usr/lib/" "/lib/" short ${name})
    foreach(path ${name} ${short})
      if(NOT owner)
        execute_process(COMMAND dpkg-query -S ${path} OUTPUT_VARIABLE found ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(found MATCHES "^([^:,]+)")
          set(owner ${CMAKE_MATCH_1})
        endif()
      endif()
    endforeach()
  endforeach()
  if(owner AND EXISTS /usr/share/doc/${owner}/copyright)
    file(INSTALL DESTINATION ${folder}/licences TYPE FILE RENAME ${owner}.txt FILES /usr/share/doc/${owner}/copyright)
  endif()
endforeach()
