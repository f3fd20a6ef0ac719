# What `cmake --install` puts where: the programs, the tables and help texts beside them in
# share/velk2d, and the desktop entry, icon and file types in their freedesktop places.
install(TARGETS velk2d-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/velk2d)
if(VELK_BUILD_GUI)
  install(FILES ${PROJECT_SOURCE_DIR}/share/velk2d.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_SOURCE_DIR}/share/velk2d.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES ${PROJECT_SOURCE_DIR}/share/velk2d-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
          RENAME velk2d.xml)
endif()
