; The Windows installer, made by scripts/package-windows, which defines VERSION, STAGE (the folder of
; what gets installed), UNINSTALL (the lines that delete it again), ICON, OUTPUT and, where the
; window is part of it, WINDOW.
;
; For one user, who needs no administrator's password. What Cabslot remembers, in
; %LOCALAPPDATA%\cabslot, is the user's and stays.
Unicode true
Target amd64-unicode ; the programs are 64-bit as well
RequestExecutionLevel user
ManifestDPIAware true
SetCompressor /SOLID lzma
Name "Cabslot"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Cabslot"
!define TYPE "Software\Classes\Cabslot.Set" ; what a *.cabset is
!define EXTENSION "Software\Classes\.cabset"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Cabslot"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"

!include FileFunc.nsh
!include MUI2.nsh
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE stayUnlessOursOrEmpty
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!ifdef WINDOW
  !define MUI_FINISHPAGE_RUN "$INSTDIR\bin\cabslot.exe"
!endif
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A program that runs cannot be replaced or deleted. Asks to end it; a silent run ends with status 2.
!macro refuseWhileRunning PROGRAM
  retry_${PROGRAM}:
  ${If} ${FileExists} "$INSTDIR\bin\${PROGRAM}.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\bin\${PROGRAM}.exe" a
    ${If} ${Errors}
      MessageBox MB_RETRYCANCEL "${PROGRAM} is running. Close it first." /SD IDCANCEL \
        IDRETRY retry_${PROGRAM}
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; Leaves $0 empty if Cabslot may be put into the chosen folder: one that the registry names as ours, or
; one with nothing in it. Anything else in a foreign folder might be overwritten, or run.
Function whyNotThere
  StrCpy $0 ""
  ReadRegStr $1 HKCU "${KEY}" "InstallLocation"
  ${DirState} "$INSTDIR" $2 ; 1: there is something in it
  ${If} $1 != $INSTDIR
  ${AndIf} $2 == 1
    StrCpy $0 "$INSTDIR holds other files. Choose an empty folder."
  ${EndIf}
FunctionEnd

Function stayUnlessOursOrEmpty
  Call whyNotThere
  ${If} $0 != ""
    MessageBox MB_ICONSTOP "$0" /SD IDOK
    Abort
  ${EndIf}
FunctionEnd

Section
  Call whyNotThere ; a silent run has no page
  ${If} $0 != ""
    SetErrorLevel 2
    Quit
  ${EndIf}
  !insertmacro refuseWhileRunning cabslot
  !insertmacro refuseWhileRunning cabslotctl
  ${If} $1 == $INSTDIR
  ${AndIf} ${FileExists} "$INSTDIR\Uninstall.exe" ; of an older version, with files of its own
    ExecWait '"$INSTDIR\Uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${STAGE}/*"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  CreateDirectory "$SMPROGRAMS\Cabslot"
  SetOutPath "$PROFILE" ; the folder that the entries start in
  !ifdef WINDOW
    CreateShortCut "$SMPROGRAMS\Cabslot\Cabslot.lnk" "$INSTDIR\bin\cabslot.exe"
  !endif
  CreateShortCut "$SMPROGRAMS\Cabslot\Cabslot in a terminal.lnk" "$SYSDIR\cmd.exe" \
    '/K "set "PATH=$INSTDIR\bin;%PATH%"&& cabslotctl --help"' "$INSTDIR\bin\cabslotctl.exe"
  CreateShortCut "$SMPROGRAMS\Cabslot\Example IRs.lnk" "$INSTDIR\share\cabslot\examples"

  !ifdef WINDOW
    WriteRegStr HKCU "${TYPE}" "" "Cabslot set"
    WriteRegStr HKCU "${TYPE}\DefaultIcon" "" "$INSTDIR\bin\cabslot.exe,0"
    WriteRegStr HKCU "${TYPE}\shell\open\command" "" '"$INSTDIR\bin\cabslot.exe" "%1"'
    WriteRegStr HKCU "${EXTENSION}" "" "Cabslot.Set"
    ${RefreshShellIcons}
  !endif

  WriteRegStr HKCU "${KEY}" "DisplayName" "Cabslot"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  !insertmacro refuseWhileRunning cabslot
  !insertmacro refuseWhileRunning cabslotctl
  !include "${UNINSTALL}"
  Delete "$INSTDIR\Uninstall.exe"
  SetOutPath "$TEMP" ; no folder that a program is in can be removed
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Cabslot\Cabslot.lnk"
  Delete "$SMPROGRAMS\Cabslot\Cabslot in a terminal.lnk"
  Delete "$SMPROGRAMS\Cabslot\Example IRs.lnk"
  RMDir "$SMPROGRAMS\Cabslot"
  ReadRegStr $1 HKCU "${KEY}" "InstallLocation"
  ${If} $1 == $INSTDIR ; else it is another installation's
    DeleteRegKey HKCU "${KEY}"
    DeleteRegKey HKCU "${TYPE}"
    ReadRegStr $2 HKCU "${EXTENSION}" ""
    ${If} $2 == "Cabslot.Set" ; else another program has taken it over
      DeleteRegKey HKCU "${EXTENSION}"
    ${EndIf}
    ${RefreshShellIcons}
  ${EndIf}
SectionEnd
