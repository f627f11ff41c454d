# The Debian package, made by scripts/package.
set(changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian)
configure_file(debian/changelog ${changelog} COPYONLY)
add_custom_command(OUTPUT ${changelog}.gz COMMAND gzip -9nkf ${changelog} DEPENDS ${changelog}
  VERBATIM)
add_custom_target(changelog ALL DEPENDS ${changelog}.gz)

set(doc ${CMAKE_INSTALL_DATADIR}/doc/cabslot)

# .reuse/dep5 has this file's format, but the licence's text stands elsewhere.
file(READ ${PROJECT_SOURCE_DIR}/.reuse/dep5 copyright)
file(READ ${PROJECT_SOURCE_DIR}/LICENSES/MIT.txt licence)
string(STRIP "${licence}" licence)
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
file(CONFIGURE OUTPUT copyright CONTENT "@copyright@\nLicense: MIT\n @licence@\n" @ONLY)

install(FILES ${CMAKE_CURRENT_BINARY_DIR}/copyright ${changelog}.gz DESTINATION ${doc})

install(FILES debian/lintian-overrides RENAME cabslot
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME cabslot)
set(CPACK_PACKAGE_CONTACT "The Cabslot developers <cabslot@cabslot.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "load impulse responses into a guitar-cabinet pedal")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Cabslot loads cabinet impulse responses into the four user slots of a USB
guitar-cabinet simulator: in a window, or from a terminal and scripts with
cabslotctl. cabslot-sim is a simulated pedal to try both without the hardware.
.
WAV files at 44.1, 48, 88.2 and 96 kHz are accepted. A udev rule lets the
user at the screen use the pedal.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Recommended: a font, the icon's theme, and the window on Wayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core | fonts-liberation, hicolor-icon-theme, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  ${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst ${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
