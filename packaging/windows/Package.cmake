# Files that ship with the Windows programs; scripts/package-windows builds the installer.
install(PROGRAMS $ENV{CABSLOT_WINDOWS_PREFIX}/bin/libsoxr.dll DESTINATION bin)
if(CABSLOT_WINDOW)
  install(IMPORTED_RUNTIME_ARTIFACTS Qt6::Core Qt6::Gui Qt6::Widgets DESTINATION bin)
  install(IMPORTED_RUNTIME_ARTIFACTS Qt6::QWindowsIntegrationPlugin DESTINATION bin/platforms)
endif()
