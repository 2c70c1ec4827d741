# What is installed, and the Debian package that CPack makes of it (tools/make-package).
include(GNUInstallDirs)

install(TARGETS tolvan-impexp RUNTIME DESTINATION bin)
install(TARGETS tolvan-ventana RUNTIME DESTINATION bin)
install(FILES ${CMAKE_BINARY_DIR}/share/man/man1/tolvan-impexp.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${CMAKE_BINARY_DIR}/share/bash-completion/completions/tolvan-impexp
  DESTINATION share/bash-completion/completions)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
install(FILES ${packaging}/do.tolvan.ImpExp.desktop DESTINATION share/applications)
install(FILES ${packaging}/do.tolvan.ImpExp.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${packaging}/do.tolvan.ImpExp.metainfo.xml DESTINATION share/metainfo)
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION share/doc/tolvan-impexp RENAME copyright)
set(docs ${CMAKE_SOURCE_DIR}/docs)
install(FILES ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${docs}/formats.md ${docs}/importacion.md ${docs}/manual.es.md
  ${docs}/registro-rnc.md ${docs}/servidores.md ${docs}/spreadsheets.md DESTINATION share/doc/tolvan-impexp)
install(DIRECTORY ${docs}/imagenes DESTINATION share/doc/tolvan-impexp)
set(data ${CMAKE_SOURCE_DIR}/data)
install(DIRECTORY ${data}/colector ${data}/esquema ${data}/permisos DESTINATION share/tolvan-impexp)
set(language idioma/es_DO.UTF-8)
install(FILES ${CMAKE_BINARY_DIR}/share/tolvan-impexp/${language}/LC_TIME DESTINATION share/tolvan-impexp/${language})
install(FILES ${CMAKE_BINARY_DIR}/share/tolvan-impexp/${language}/LC_MESSAGES/SYS_LC_MESSAGES
  DESTINATION share/tolvan-impexp/${language}/LC_MESSAGES)
install(DIRECTORY ${data}/plantillas/PlantillasImpresion DESTINATION share/tolvan-impexp)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tolvan-impexp)
set(CPACK_PACKAGE_VENDOR Tolvan)
set(CPACK_PACKAGE_CONTACT "Tolvan <soporte@tolvan.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "data import and export of the Tolvan point of sale")
set(CPACK_PACKAGE_DESCRIPTION "The command tolvan-impexp for schedulers and administrators, and the windows for the person at
the desk: daily sales files, price lists from Excel workbooks, the Dominican taxpayer registry, and files for collectors.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
# What the programs and the modules link is found by dpkg-shlibdeps; libgtk-3-common holds the toolkit's Spanish texts,
# and libglib2.0-data those for sizes and failures of files. xdg-open shows a new workbook to the user, and the toolkit
# draws some signs with librsvg.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS libgtk-3-common)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libglib2.0-data, librsvg2-common, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "odbc-postgresql, tdsodbc")
include(CPack)
