; The Cryptelle installer: the program, its help, the image tool and the monitor, the
; reference device host as an optional component for evaluation, a Start-menu shortcut, the
; association of .qvi images, and an uninstaller that removes all of it and leaves the
; user's images alone. Silent with /S (and /D=FOLDER) for administrators.
;
;   makensis -DVERSION=1.0.0 -DBIN=<folder of the built programs> -DICON=<program icon>
;            -DOUTPUT=<setup.exe> cryptelle.nsi

; A 64-bit installer, like the programs it installs (and Wine without 32-bit support runs it).
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin

!include "MUI2.nsh"
!include "x64.nsh"

!define PRODUCT "Cryptelle"
!define PUBLISHER "Pellmora"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Cryptelle"
!define IMAGE_CLASS "Cryptelle.Image"
!define SETTINGS_KEY "Software\Pellmora\Cryptelle"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define MONITOR_RUN_VALUE "PellmoraCryptelleMonitor"
!define SHCNE_ASSOCCHANGED 0x08000000
; The message that asks every running Cryptelle window to close.
!define CLOSE_MESSAGE "{3523D7FC-A619-4087-89A7-FB938078B54D}"

Name "${PRODUCT} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\${PUBLISHER}\${PRODUCT}"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PUBLISHER} ${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "${PUBLISHER}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\ctell.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Asks a running Cryptelle to close, so that its files can be replaced or removed.
!macro CloseRunningProgram
  System::Call 'user32::RegisterWindowMessageW(w "${CLOSE_MESSAGE}") i .r0'
  System::Call 'user32::PostMessageW(p ${HWND_BROADCAST}, i r0, p 0, p 0)'
  Sleep 500
!macroend

Function .onInit
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Function un.onInit
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Section "${PRODUCT}" SectionProgram
  SectionIn RO
  !insertmacro CloseRunningProgram
  SetOutPath "$INSTDIR"
  File "${BIN}/ctell.exe"
  File "${BIN}/ctell.chm"
  File "${BIN}/ctellimg.exe"
  File "${BIN}/ctellmon.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\${PRODUCT}"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk" "$INSTDIR\ctell.exe"

  ; Opening an image mounts it: the mount dialog on that image.
  WriteRegStr HKLM "Software\Classes\.qvi" "" "${IMAGE_CLASS}"
  WriteRegStr HKLM "Software\Classes\${IMAGE_CLASS}" "" "${PRODUCT} Virtual Disk Image"
  WriteRegStr HKLM "Software\Classes\${IMAGE_CLASS}\DefaultIcon" "" "$INSTDIR\ctell.exe,-165"
  WriteRegStr HKLM "Software\Classes\${IMAGE_CLASS}\shell\open\command" "" \
    '"$INSTDIR\ctell.exe" /mount "%1"'
  System::Call 'shell32::SHChangeNotify(i ${SHCNE_ASSOCCHANGED}, i 0, p 0, p 0)'

  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\ctell.exe,0"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; The device host that ships with this package is the reference one: it mounts images for
; trying the program out; the production device host comes with its driver separately.
Section "Reference device host (for evaluation)" SectionDeviceHost
  SetOutPath "$INSTDIR"
  File "${BIN}/pdevhost.exe"
  ExecWait '"$INSTDIR\pdevhost.exe" --install'
  ExecWait '"$INSTDIR\pdevhost.exe" --start'
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} \
    "The program, its help, the command-line image tool and Cryptelle Monitor."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionDeviceHost} \
    "A device host service for evaluation, which mounts images without a driver."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Section "Uninstall"
  !insertmacro CloseRunningProgram
  IfFileExists "$INSTDIR\pdevhost.exe" 0 no_device_host
    ExecWait '"$INSTDIR\pdevhost.exe" --stop'
    ExecWait '"$INSTDIR\pdevhost.exe" --uninstall'
    Delete "$INSTDIR\pdevhost.exe"
  no_device_host:
  Delete "$INSTDIR\ctell.exe"
  Delete "$INSTDIR\ctell.chm"
  Delete "$INSTDIR\ctellimg.exe"
  Delete "$INSTDIR\ctellmon.exe"
  Delete "$INSTDIR\uninstall.exe"
  ; Removed only when empty: images kept in the folder stay, and so does the folder.
  RMDir "$INSTDIR"
  RMDir "$PROGRAMFILES64\${PUBLISHER}"

  Delete "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk"
  RMDir "$SMPROGRAMS\${PRODUCT}"

  ReadRegStr $0 HKLM "Software\Classes\.qvi" ""
  StrCmp $0 "${IMAGE_CLASS}" 0 +2
    DeleteRegKey HKLM "Software\Classes\.qvi"
  DeleteRegKey HKLM "Software\Classes\${IMAGE_CLASS}"
  System::Call 'shell32::SHChangeNotify(i ${SHCNE_ASSOCCHANGED}, i 0, p 0, p 0)'

  DeleteRegValue HKCU "${RUN_KEY}" "${MONITOR_RUN_VALUE}"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKCU "Software\${PUBLISHER}"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
