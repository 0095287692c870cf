; SPDX-License-Identifier: MIT
; The setup for Windows:  makensis -DVERSION=... -DFILES=list_files.sh's output -DSETUP=result -DLICENCE=text setup.nsi
; It asks for whom to install; silently (/S) that is the person who starts it, or everybody with /AllUsers.
Unicode true
; The other kind of setup would be a 32-bit program, which sees other folders and another registry than ours.
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true

!define NAME "Kestrin Launcher"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define SETTINGS_KEY "Software\${NAME}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_USE_PROGRAMFILES64
; Who installed it once before gets the next one in the same place and for the same people.
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${SETTINGS_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${SETTINGS_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include "${FILES}"

Name "${NAME}"
OutFile "${SETUP}"
BrandingText "${NAME} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${NAME} setup"
VIAddVersionKey CompanyName "Kestrin"
VIAddVersionKey LegalCopyright "MIT licence"

!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartWindow
!insertmacro MUI_PAGE_LICENSE "${LICENCE}"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A kind of file: its ending, its name in the registry, what people read, its icon, and whether the window opens it.
!macro ForFileTypes WHAT
  !insertmacro ${WHAT} ".lscfg" "Kestrin.SoundSet" "Kestrin sound set" sound-set opens
  !insertmacro ${WHAT} ".ldset" "Kestrin.LedSettings" "Kestrin LED settings" led-settings opens
  !insertmacro ${WHAT} ".lsu" "Kestrin.Sound" "Kestrin sound" sound shows
!macroend

!macro RegisterFileType ENDING TYPE TEXT ICON OPENED
  WriteRegStr SHCTX "Software\Classes\${TYPE}" "" "${TEXT}"
  WriteRegStr SHCTX "Software\Classes\${TYPE}\DefaultIcon" "" "$INSTDIR\icons\application-x-kestrin-${ICON}.ico"
  !if ${OPENED} == opens
    WriteRegStr SHCTX "Software\Classes\${TYPE}\shell\open\command" "" '"$INSTDIR\kestrin.exe" "%1"'
  !endif
  WriteRegStr SHCTX "Software\Classes\${ENDING}" "" "${TYPE}"
  WriteRegStr SHCTX "Software\Classes\${ENDING}\OpenWithProgids" "${TYPE}" ""
!macroend

; What another program has made its own since stays as it is.
!macro UnregisterFileType ENDING TYPE TEXT ICON OPENED
  DeleteRegKey SHCTX "Software\Classes\${TYPE}"
  ReadRegStr $0 SHCTX "Software\Classes\${ENDING}" ""
  ${If} $0 == "${TYPE}"
    DeleteRegValue SHCTX "Software\Classes\${ENDING}" ""
  ${EndIf}
  DeleteRegValue SHCTX "Software\Classes\${ENDING}\OpenWithProgids" "${TYPE}"
  DeleteRegKey /ifempty SHCTX "Software\Classes\${ENDING}\OpenWithProgids"
  DeleteRegKey /ifempty SHCTX "Software\Classes\${ENDING}"
!macroend

!macro TellDesktop
  ; SHCNE_ASSOCCHANGED
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

; A program that runs cannot be replaced. Without anybody to ask, nothing is done and the exit code is 2.
!macro TryToOpen PROGRAM
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    FileClose $0
  ${EndIf}
!macroend
!macro WaitUntilClosed UN
Function ${UN}WaitUntilClosed
  again:
  ClearErrors
  !insertmacro TryToOpen kestrin.exe
  !insertmacro TryToOpen kestrinctl.exe
  IfErrors 0 closed
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
    "${NAME} or kestrinctl is open, or you may not write to $INSTDIR. Close them - a download to a board has to end first - and choose Retry." \
    /SD IDCANCEL IDRETRY again
  SetErrorLevel 2
  Quit
  closed:
FunctionEnd
!macroend
!insertmacro WaitUntilClosed ""
!insertmacro WaitUntilClosed "un."

Function .onInit
  SetRegView 64
  ; The folder that was named with /D=; what comes next would put another in its place.
  Push $INSTDIR
  !insertmacro MULTIUSER_INIT
  Pop $0
  ${If} $0 != ""
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
  ; The folder that this uninstaller lies in: the one that is registered may be that of a later installation.
  Push $INSTDIR
  !insertmacro MULTIUSER_UNINIT
  Pop $INSTDIR
FunctionEnd

; A folder that others use is neither filled nor, later, emptied: we get one of our own in it. Sets $Registered to the folder
; of the version that is to go.
Var Registered
Function UseOwnFolder
  ReadRegStr $Registered SHCTX "${SETTINGS_KEY}" "InstallLocation"
  ${GetFileName} "$INSTDIR" $0
  ${If} $Registered == $INSTDIR
  ${OrIf} $0 == "${NAME}"
    Return
  ${EndIf}
  ${DirState} "$INSTDIR" $0
  ${If} $0 = 1
    StrCpy $INSTDIR "$INSTDIR\${NAME}"
  ${EndIf}
FunctionEnd

; A file that people may have changed goes only when it is as it was installed, which its time tells: the setup gives each
; file the time that it had here. Else it stays, as FILE.mine, FILE.mine2 ...
!macro DeleteUnchanged FILE HIGH LOW
  StrCpy $0 "$INSTDIR\${FILE}"
  StrCpy $1 "${HIGH} ${LOW}"
  Call un.DeleteUnchanged
!macroend
Function un.DeleteUnchanged
  ClearErrors
  GetFileTime $0 $2 $3
  ${If} ${Errors}
    Return
  ${EndIf}
  ${If} "$2 $3" == $1
    Delete $0
    Return
  ${EndIf}
  StrCpy $2 "$0.mine"
  StrCpy $3 1
  ${While} ${FileExists} $2
    IntOp $3 $3 + 1
    StrCpy $2 "$0.mine$3"
  ${EndWhile}
  ClearErrors
  Rename $0 $2
  ${If} ${Errors}
    SetErrorLevel 2
    Abort "$0 is not as it was installed and could not be kept. Copy it elsewhere and start again."
  ${EndIf}
FunctionEnd

; By the Explorer, which is the person's own: started by the setup it would be an administrator's.
Function StartWindow
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\kestrin.exe"'
FunctionEnd

Section
  Call UseOwnFolder
  Call WaitUntilClosed
  ; What an older version installed goes first: this one may no longer know all of it.
  ${If} $Registered == $INSTDIR
  ${AndIf} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode _?=$INSTDIR' $0
    ${If} $0 <> 0
      MessageBox MB_OK|MB_ICONSTOP \
        "The older version in $INSTDIR could not be removed. Remove it under Apps in Windows' settings and start again." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
  ${EndIf}
  ClearErrors
  !insertmacro InstallFiles
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP \
      "Not every file could be written to $INSTDIR. Make sure that there is room and that you may write there, and start again." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\kestrin.exe"
  !insertmacro ForFileTypes RegisterFileType
  !insertmacro TellDesktop
  WriteRegStr SHCTX "${SETTINGS_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\kestrin.exe,0"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Kestrin"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${INSTALLED_KB}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section Uninstall
  Call un.WaitUntilClosed
  !insertmacro UninstallFiles
  Delete "$INSTDIR\uninstall.exe"
  ; Where the window puts the fonts that people fetch.
  Delete "$INSTDIR\fonts\.lock"
  RMDir "$INSTDIR\fonts"
  ; Never with what is in it: people put sounds of their own beside the examples.
  RMDir "$INSTDIR"
  ; The menu and the registry speak of one installation, and another one may have come after this.
  ReadRegStr $0 SHCTX "${SETTINGS_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
  ${OrIfNot} ${FileExists} "$0\uninstall.exe"
    Delete "$SMPROGRAMS\${NAME}.lnk"
    !insertmacro ForFileTypes UnregisterFileType
    !insertmacro TellDesktop
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    DeleteRegKey SHCTX "${SETTINGS_KEY}"
  ${EndIf}
SectionEnd
