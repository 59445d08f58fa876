# What is installed, in two components: the console program, which stands alone, and the windows.
set(shared share/ledrix)

install(TARGETS ledrixc COMPONENT ledrixc)
install(PROGRAMS packaging/ledrix-difftool DESTINATION bin COMPONENT ledrixc)
install(FILES packaging/Readme.txt DESTINATION ${shared} COMPONENT ledrixc)
if(NOT CMAKE_CROSSCOMPILING)
  add_custom_command(TARGET ledrixc POST_BUILD
    COMMAND ledrixc --bash-completion > ${CMAKE_BINARY_DIR}/ledrixc.bash-completion)
  install(FILES ${CMAKE_BINARY_DIR}/ledrixc.bash-completion COMPONENT ledrixc
          DESTINATION share/bash-completion/completions RENAME ledrixc)
endif()
function(install_page component name) # place...
  if(TARGET manual)
    foreach(place ${ARGN})
      install(FILES ${CMAKE_BINARY_DIR}/man/${place}/${name}.1 DESTINATION share/man/${place}
              COMPONENT ${component})
    endforeach()
  endif()
endfunction()
install_page(ledrixc ledrixc man1 ja/man1)
install_page(ledrixc ledrix-difftool ja/man1)

if(TARGET ledrix)
  install(TARGETS ledrix COMPONENT ledrix)
  install(DIRECTORY packaging/SendTo DESTINATION ${shared} COMPONENT ledrix)
  install_page(ledrix ledrix man1 ja/man1)
  if(TARGET manual)
    install(DIRECTORY ${CMAKE_BINARY_DIR}/help DESTINATION ${shared} COMPONENT ledrix)
  endif()

  install(FILES packaging/desktop/ledrix.desktop packaging/desktop/ledrix-view.desktop
          DESTINATION share/applications COMPONENT ledrix)
  install(FILES packaging/desktop/ledrix.xml DESTINATION share/mime/packages COMPONENT ledrix)
  install(FILES packaging/desktop/example.ledrix.ledrix.metainfo.xml DESTINATION share/metainfo
          COMPONENT ledrix)
  install(FILES packaging/icons/ledrix.svg DESTINATION share/icons/hicolor/scalable/apps
          COMPONENT ledrix)
  foreach(size 48 128 256)
    install(FILES packaging/icons/ledrix-${size}.png RENAME ledrix.png COMPONENT ledrix
            DESTINATION share/icons/hicolor/${size}x${size}/apps)
  endforeach()

  # File managers.
  set(menus packaging/file-manager)
  install(PROGRAMS ${menus}/ledrix-files DESTINATION ${shared} COMPONENT ledrix)
  install(FILES ${menus}/ledrix-one.desktop ${menus}/ledrix-two.desktop
          DESTINATION share/kio/servicemenus COMPONENT ledrix)
  install(FILES ${menus}/ledrix-compare.nemo_action ${menus}/ledrix-remember.nemo_action
                ${menus}/ledrix-with.nemo_action
          DESTINATION share/nemo/actions COMPONENT ledrix)
  install(FILES ${menus}/ledrix.py DESTINATION share/nautilus-python/extensions COMPONENT ledrix)
endif()
