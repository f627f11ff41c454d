# The Windows installer and the zip, made by scripts/package-windows.
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION . RENAME LICENSE.txt)
install(FILES /usr/share/doc/libhidapi-dev/copyright DESTINATION licences RENAME hidapi.txt)
install(FILES /usr/share/doc/libcli11-dev/copyright DESTINATION licences RENAME CLI11.txt)
install(FILES /usr/share/doc/nlohmann-json3-dev/copyright
  DESTINATION licences RENAME nlohmann-json.txt)
install(FILES /usr/share/doc/libkissfft-dev/copyright DESTINATION licences RENAME kissfft.txt)
install(FILES /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright DESTINATION licences RENAME gcc.txt)

set(CPACK_GENERATOR NSIS ZIP)
set(CPACK_PACKAGE_NAME Cabslot)
set(CPACK_PACKAGE_VENDOR Cabslot)
set(CPACK_PACKAGE_FILE_NAME cabslot-${PROJECT_VERSION}-windows)
set(CPACK_PACKAGE_INSTALL_DIRECTORY Cabslot)
set(CPACK_STRIP_FILES ON)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
# For one user, who needs no administrator's password. The 32-bit stub does not start on wine64.
set(CPACK_NSIS_DEFINES "Target amd64-unicode\nRequestExecutionLevel user")
set(CPACK_NSIS_INSTALL_ROOT "$LOCALAPPDATA\\\\Programs")
set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
include(CPack)
