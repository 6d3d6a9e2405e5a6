# What an installed Quantavue needs beside the program, and its Debian package:
# `cpack -G DEB` in the build folder (scripts/package) makes quantavue_<version>_<arch>.deb.
set(QV_PACKAGING ${PROJECT_SOURCE_DIR}/packaging)
set(QV_SHARE share/quantavue)

# The program looks for these beside itself in a build tree and in ../share/quantavue
# when installed.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/HelpMessages/ DESTINATION ${QV_SHARE}/HelpMessages OPTIONAL
        PATTERN "*~" EXCLUDE)
install(FILES ${PROJECT_SOURCE_DIR}/docs/help.html ${PROJECT_SOURCE_DIR}/docs/contact.html
        DESTINATION ${QV_SHARE}/docs)
install(FILES ${PROJECT_SOURCE_DIR}/src/output/copy.wav DESTINATION ${QV_SHARE})

install(FILES ${QV_PACKAGING}/quantavue.desktop DESTINATION share/applications)
install(FILES ${QV_PACKAGING}/quantavue.svg DESTINATION share/icons/hicolor/scalable/apps)
foreach(size 48 256)
  install(FILES ${QV_PACKAGING}/quantavue-${size}.png DESTINATION share/icons/hicolor/${size}x${size}/apps
          RENAME quantavue.png)
endforeach()

# Debian wants the manual page and the changelog compressed, without a time stamp.
set(QV_GZ ${CMAKE_BINARY_DIR}/packaging)
add_custom_command(
  OUTPUT ${QV_GZ}/quantavue.1.gz ${QV_GZ}/changelog.gz
  COMMAND ${CMAKE_COMMAND} -E make_directory ${QV_GZ}
  COMMAND sh -c "gzip -9nc '${QV_PACKAGING}/quantavue.1' > '${QV_GZ}/quantavue.1.gz'"
  COMMAND sh -c "gzip -9nc '${QV_PACKAGING}/changelog' > '${QV_GZ}/changelog.gz'"
  DEPENDS ${QV_PACKAGING}/quantavue.1 ${QV_PACKAGING}/changelog
  VERBATIM)
add_custom_target(qv_package_docs ALL DEPENDS ${QV_GZ}/quantavue.1.gz ${QV_GZ}/changelog.gz)
install(FILES ${QV_GZ}/quantavue.1.gz DESTINATION share/man/man1)
install(FILES ${QV_GZ}/changelog.gz ${QV_PACKAGING}/copyright DESTINATION share/doc/quantavue)
install(FILES ${QV_PACKAGING}/lintian-overrides DESTINATION share/lintian/overrides RENAME quantavue)

execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE QV_DEB_ARCH
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT QV_DEB_ARCH)
  set(QV_DEB_ARCH amd64)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quantavue)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Quantavue maintainers")
set(CPACK_PACKAGE_CONTACT "Quantavue maintainers <maintainers@users.noreply.c-seed-6f81a9ee.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "one variable of a spreadsheet, at a glance")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Quantavue attaches to a running LibreOffice Calc, takes the column you point
at and shows, in one always-on-top window, a histogram that follows every
move, thirteen statistics, bin rules, truncation sliders, a discrete view,
distribution plots and normality tests. It never writes into your cells.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME quantavue_${PROJECT_VERSION}_${QV_DEB_ARCH}.deb)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${QV_DEB_ARCH})
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Qt, QCustomPlot and the office's UNO runtime come from the program's own links.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS libreoffice-calc)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
