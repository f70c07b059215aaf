; The installer of the Windows package: for the user who runs it, without administrator
; rights. scripts/windows/build-installer gives it
;   FOLDER   the unpacked package, whose content is installed
;   REMOVAL  a script that deletes exactly these files
;   VERSION, SIZE (kB), ICON, SIDE (the picture beside first and last page), OUTPUT
;   DESKTOP  where the desktop program is in it; otherwise there are the commands only
;
; Silent: /S [/AUTOSTART=on|off] [/D=folder]; exit code 0, or 2 when it could not be done.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define PRODUCT "KALVO Horizon"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
; Where the program keeps what belongs to the user; never touched from here.
!define DATA "$LOCALAPPDATA\Kalvo Horizon"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1036 "CompanyName" "KALVO"
VIAddVersionKey /LANG=1036 "FileDescription" "Installation de ${PRODUCT}"
VIAddVersionKey /LANG=1036 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1036 "LegalCopyright" "KALVO"
VIAddVersionKey /LANG=1036 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1036 "ProductVersion" "${VERSION}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "Le programme va être installé pour vous seul ; les droits d'administrateur ne sont pas nécessaires.$\r$\n$\r$\nUne version plus ancienne est remplacée ; vos réglages, scénarios et lots restent dans le dossier ${DATA}.$\r$\n$\r$\n$_CLICK"
!insertmacro MUI_PAGE_WELCOME
!ifdef DESKTOP
  !define MUI_COMPONENTSPAGE_SMALLDESC
  !insertmacro MUI_PAGE_COMPONENTS
!endif
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!ifdef DESKTOP
  !define MUI_FINISHPAGE_RUN "$INSTDIR\kalvo-horizon.exe"
!endif
!insertmacro MUI_PAGE_FINISH

!define MUI_UNCONFIRMPAGE_TEXT_TOP "Le programme va être retiré. Vos réglages, scénarios et lots restent dans le dossier ${DATA}, et vos choix dans la base de registre."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "French"

; A program that runs cannot be replaced: the user ends it, or nothing is done.
!macro RequireEnded PROGRAM
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\${PROGRAM}"
      ${ExitDo}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${PRODUCT} est en cours d'exécution : quittez-le, puis recommencez." /SD IDCANCEL IDRETRY +2
    Abort "${PRODUCT} est en cours d'exécution."
  ${Loop}
!macroend

; $0: "ours" if the session starts the program of this folder.
!macro SeeAutostart
  ReadRegStr $0 HKCU "${RUN_KEY}" "${PRODUCT}"
  StrCpy $1 '"$INSTDIR\kalvo-horizon.exe"'
  StrLen $2 $1
  StrCpy $0 $0 $2
  ${If} $0 == $1
    StrCpy $0 "ours"
  ${EndIf}
!macroend

Section "${PRODUCT}" SecProgram
  SectionIn RO
  !insertmacro RequireEnded kalvo-horizon.exe
  !insertmacro RequireEnded kalvo-horizon.com
  ; What an earlier version had, and this one has no longer.
  ${If} ${FileExists} "$INSTDIR\desinstaller.exe"
    ExecWait '"$INSTDIR\desinstaller.exe" /S /REPLACE _?=$INSTDIR'
  ${EndIf}

  SetOutPath "$INSTDIR"
  File /r "${FOLDER}/*"
  WriteUninstaller "$INSTDIR\desinstaller.exe"
  !ifdef DESKTOP
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\kalvo-horizon.exe"
  !else
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\kalvo-horizon.com" "listen"
  !endif

  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\kalvo-horizon.com"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "KALVO"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\desinstaller.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\desinstaller.exe" /S'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Comments" "Données : ${DATA}"
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

!ifdef DESKTOP
Section /o "Démarrer avec la session" SecAutostart
SectionEnd

; The program itself knows how; an entry that is there already, perhaps with a folder of
; its own, stays as it is.
Section "-autostart"
  !insertmacro SeeAutostart
  ${If} ${SectionIsSelected} ${SecAutostart}
    ${If} $0 != "ours"
      nsExec::Exec '"$INSTDIR\kalvo-horizon.com" --autostart on'
      Pop $0
    ${EndIf}
  ${ElseIf} $0 == "ours"
    nsExec::Exec '"$INSTDIR\kalvo-horizon.com" --autostart off'
    Pop $0
  ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SecProgram} "Le programme et son entrée du menu Démarrer. Les données sont dans ${DATA}."
  !insertmacro MUI_DESCRIPTION_TEXT ${SecAutostart} "Le programme démarre avec votre session ; kalvo-horizon --autostart on|off en change."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; What was chosen before is proposed again, and is what a silent run keeps.
Function .onInit
  !insertmacro SeeAutostart
  ${If} $0 == "ours"
    !insertmacro SelectSection ${SecAutostart}
  ${EndIf}
  ${GetParameters} $1
  ${GetOptions} $1 "/AUTOSTART=" $2
  ${If} $2 == "on"
    !insertmacro SelectSection ${SecAutostart}
  ${ElseIf} $2 == "off"
    !insertmacro UnselectSection ${SecAutostart}
  ${EndIf}
FunctionEnd
!endif

Section "Uninstall"
  !insertmacro RequireEnded kalvo-horizon.exe
  !insertmacro RequireEnded kalvo-horizon.com
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/REPLACE" $2
  ${If} ${Errors}
    !insertmacro SeeAutostart
    ${If} $0 == "ours"
      DeleteRegValue HKCU "${RUN_KEY}" "${PRODUCT}"
    ${EndIf}
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    DetailPrint "Vos données restent dans ${DATA}."
  ${EndIf}
  ; These files only: whatever else the folder holds is the user's.
  !include "${REMOVAL}"
  Delete "$INSTDIR\desinstaller.exe"
  RMDir "$INSTDIR"
SectionEnd
