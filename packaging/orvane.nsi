; The installer, made by packaging/pack.py, which says where things are:
;   VERSION  1.0.0          ICON   the program's icon         OUT  the installer's path
;   FILES    generated: the macros InstallFiles and RemoveFiles, one line for each file of the program
;   SIZE     of the installed program, in KiB
;   PICTURE  beside the last page, 164 x 314
;
; It asks for no administrator's rights and writes only what belongs to the user: the program keeps its settings
; beside itself, and below "Program Files" they could not be saved.
Target amd64-unicode
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh

!define NAME "Orvane Lite"
!define SETTINGS "Orvane.dat"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\OrvaneLite"
!define ERROR_IN_USE 3 ; our status when the program ran and nobody was there to close it
!define TRIES 30       ; of 100 ms: a program that was just closed needs a second to end

Name "${NAME}"
OutFile "${OUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
; A newer version goes where the older one is.
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
ManifestDPIAware true
AllowSkipFiles off
BrandingText "${NAME} ${VERSION}"
CRCCheck force

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${NAME} setup"
VIAddVersionKey "CompanyName" "Quorran Instruments"
VIAddVersionKey "LegalCopyright" "Published under the MIT licence"

!include "${FILES}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE KeepToWritableFolders
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Orvane.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; The file of a running program cannot be opened for writing. This is asked rather than the program's mutex: it
; tells of a copy that another user runs from this folder, and not of one that runs from another folder.
!macro DefineStopWhileRunning un
Function ${un}StopWhileRunning
  look:
  StrCpy $1 0
  ${DoWhile} $1 < ${TRIES}
    ${IfNot} ${FileExists} "$INSTDIR\Orvane.exe"
      Return
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\Orvane.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      Return
    ${EndIf}
    Sleep 100
    IntOp $1 $1 + 1
  ${Loop}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${NAME} is running. Close it, then press Retry." /SD IDCANCEL IDRETRY look
  SetErrorLevel ${ERROR_IN_USE}
  Quit
FunctionEnd
!macroend
!insertmacro DefineStopWhileRunning ""
!insertmacro DefineStopWhileRunning "un."

Function KeepToWritableFolders
  ClearErrors
  CreateDirectory "$INSTDIR"
  GetTempFileName $1 "$INSTDIR"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONEXCLAMATION "${NAME} keeps its settings beside itself, and nothing can be saved in $INSTDIR. Please choose another folder."
    Abort
  ${EndIf}
  Delete $1
  RMDir "$INSTDIR" ; unless something was in it
FunctionEnd

Section
  Call StopWhileRunning
  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\Orvane.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Orvane.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Quorran Instruments"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  Call un.StopWhileRunning
  ${If} ${FileExists} "$INSTDIR\${SETTINGS}"
    MessageBox MB_YESNO|MB_ICONQUESTION "Keep your settings, ${SETTINGS}, for a later installation?" /SD IDYES IDYES keep
    Delete "$INSTDIR\${SETTINGS}"
    Delete "$INSTDIR\${SETTINGS}.bak"
    Delete "$INSTDIR\${SETTINGS}.new"  ; of a save that was killed
    keep:
  ${EndIf}
  SetOutPath "$TEMP" ; a folder that is somebody's current one cannot be removed
  ; File by file: what the user put beside the program stays.
  !insertmacro RemoveFiles
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
