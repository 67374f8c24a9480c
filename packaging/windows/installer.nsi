; SPDX-License-Identifier: MIT
; The installer for Windows, for all users of the machine. Made by scripts/windows/package, which defines
;   PROGRAM    folder with what is installed           STANDIN   the stand-in recorder's file
;   SETTINGS   settings.nsh as filled in by CMake      REMOVE    file with the commands that remove what is installed
;   OUTPUT     the installer to make
;
; Command line, beside NSIS's own /S (silent) and /D=FOLDER (last, without quotes):
;   /SIGNIN    start the program at sign-in            /STANDIN   install the stand-in recorder, if there is no recorder
; An update keeps both choices.
;
; Exit codes: 0 done, 1 cancelled by the user, 2 failed, 3 the program is running, 4 a file is in use or cannot be
; written, 5 this Windows is too old. (The silent uninstaller goes on in a copy of itself and gives none, unless it is
; started with _?=FOLDER as the last argument; it then stays itself.)
;
; The recorder is a product of its own that somebody puts beside the program: a TarnvikRecord.exe that this installer did
; not put there is neither replaced nor removed.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include WinVer.nsh
!include "${SETTINGS}"

!define EXIT_RUNNING 3
!define EXIT_FILES 4
!define EXIT_OLD_WINDOWS 5

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TarnvikControl"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
; The program holds this mutex as long as it runs.
!define MUTEX "Global\{4S434D52-A533-F53B-557E-C5D152152213}"
!define MENU "$SMPROGRAMS\Tarnvik"

Name "TarnvikControl"
OutFile "${OUTPUT}"
; The folder in which the program looks for its guide, too.
InstallDir "$PROGRAMFILES64\Tarnvik"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
RequestExecutionLevel admin
ManifestSupportedOS Win10
ManifestDPIAware true
BrandingText "Quillane GmbH"
VIProductVersion "${VERSION}"
VIAddVersionKey /LANG=0 "ProductName" "TarnvikControl"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "Installer of TarnvikControl"
VIAddVersionKey /LANG=0 "CompanyName" "Quillane GmbH"
VIAddVersionKey /LANG=0 "LegalCopyright" "(C) Quillane GmbH"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
; No "run the program now" at the end: it would run with the installer's rights and settings.
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; Windows' language decides; English where it is neither.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_RESERVEFILE_LANGDLL

LangString SectionProgram ${LANG_ENGLISH} "TarnvikControl"
LangString SectionProgram ${LANG_GERMAN} "TarnvikControl"
LangString SectionSignIn ${LANG_ENGLISH} "Start at sign-in"
LangString SectionSignIn ${LANG_GERMAN} "Beim Anmelden starten"
LangString SectionStandIn ${LANG_ENGLISH} "Stand-in recorder"
LangString SectionStandIn ${LANG_GERMAN} "Ersatz-Rekorder"
LangString AboutProgram ${LANG_ENGLISH} "The program, its languages and its start menu entries."
LangString AboutProgram ${LANG_GERMAN} "Das Programm, seine Sprachen und seine Einträge im Startmenü."
LangString AboutSignIn ${LANG_ENGLISH} "Starts the program for every user who signs in. One instance runs per machine."
LangString AboutSignIn ${LANG_GERMAN} "Startet das Programm für jeden Benutzer, der sich anmeldet. Je Rechner läuft eine Instanz."
LangString AboutStandIn ${LANG_ENGLISH} "For demonstration: records nothing. Left out when there is a recorder in the folder."
LangString AboutStandIn ${LANG_GERMAN} "Zur Vorführung: zeichnet nichts auf. Entfällt, wenn im Ordner ein Rekorder liegt."
LangString Running ${LANG_ENGLISH} "TarnvikControl is running. Please quit it (menu File - Quit), then continue."
LangString Running ${LANG_GERMAN} "TarnvikControl läuft. Bitte beenden Sie es (Menü Datei - Beenden) und fahren Sie dann fort."
LangString InUse ${LANG_ENGLISH} "A file of TarnvikControl is in use, perhaps by a recorder that is still running:"
LangString InUse ${LANG_GERMAN} "Eine Datei von TarnvikControl ist in Benutzung, vielleicht von einem noch laufenden Rekorder:"
LangString NotWritten ${LANG_ENGLISH} "The files could not be written to the folder:"
LangString NotWritten ${LANG_GERMAN} "Die Dateien konnten nicht in den Ordner geschrieben werden:"
LangString OldStays ${LANG_ENGLISH} "The installed version could not be removed."
LangString OldStays ${LANG_GERMAN} "Die installierte Version konnte nicht entfernt werden."
LangString OldWindows ${LANG_ENGLISH} "TarnvikControl needs Windows 10 or later."
LangString OldWindows ${LANG_GERMAN} "TarnvikControl benötigt Windows 10 oder neuer."

; RequireNotInUse FILE: asks to end what uses the file of the old version; ends the installer when it stays in use.
!macro RequireNotInUse FILE
    StrCpy $R9 "${FILE}"
    Call ${UN}RequireFileFree
!macroend

; What the installer and the uninstaller have in common; UN is "" or "un.".
!macro CommonFunctions UN
; Asks to quit a running program; ends the installer when it goes on.
Function ${UN}RequireProgramEnded
    again:
        StrCpy $R1 "${MUTEX}"
        System::Call 'kernel32::OpenMutexW(i 0x100000, i 0, w R1) p .R0 ?e'
        Pop $R2
        ${If} $R0 P<> 0
            System::Call 'kernel32::CloseHandle(p R0)'
        ${ElseIf} $R2 = 2 ; no such mutex; any other failure means that there is one
            Return
        ${EndIf}
        SetErrorLevel ${EXIT_RUNNING}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" /SD IDCANCEL IDRETRY again
        Quit
FunctionEnd

Function ${UN}RequireFileFree
    again:
        ${IfNot} ${FileExists} "$INSTDIR\$R9"
            Return
        ${EndIf}
        ClearErrors
        FileOpen $R0 "$INSTDIR\$R9" a
        ${IfNot} ${Errors}
            FileClose $R0
            Return
        ${EndIf}
        SetErrorLevel ${EXIT_FILES}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)$\n$INSTDIR\$R9" /SD IDCANCEL IDRETRY again
        Quit
FunctionEnd

; Called before anything is changed.
Function ${UN}RequireUnused
    Call ${UN}RequireProgramEnded
    !insertmacro RequireNotInUse TarnvikControl.exe
    !insertmacro RequireNotInUse Qt6Core.dll ; a recorder may use these two as well
    !insertmacro RequireNotInUse libstdc++-6.dll
    SetErrorLevel 0
FunctionEnd

; Puts into $R3 what the recorder's file is known by: its time and size; empty when there is none.
Function ${UN}IdentifyRecorder
    StrCpy $R3 ""
    ${If} ${FileExists} "$INSTDIR\TarnvikRecord.exe"
        GetFileTime "$INSTDIR\TarnvikRecord.exe" $R1 $R2
        FileOpen $R0 "$INSTDIR\TarnvikRecord.exe" r
        FileSeek $R0 0 END $R3
        FileClose $R0
        StrCpy $R3 "$R1:$R2:$R3"
    ${EndIf}
FunctionEnd
!macroend
!define UN ""
!insertmacro CommonFunctions ""
!undef UN
!define UN "un."
!insertmacro CommonFunctions "un."
!undef UN

Section "-prepare"
    Call RequireUnused
    ; An older version goes first, so that nothing of it stays behind.
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\Uninstall.exe"
        ExecWait '"$0\Uninstall.exe" /S _?=$0' $1
        ${If} $1 <> 0
            SetErrorLevel $1
            MessageBox MB_OK|MB_ICONSTOP "$(OldStays)" /SD IDOK
            Quit
        ${EndIf}
    ${EndIf}
SectionEnd

Section "$(SectionProgram)" SECTION_PROGRAM
    SectionIn RO
    SetShellVarContext all
    ClearErrors
    SetOutPath "$INSTDIR"
    File /r "${PROGRAM}/*"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    ${If} ${Errors}
        SetErrorLevel ${EXIT_FILES}
        MessageBox MB_OK|MB_ICONSTOP "$(NotWritten)$\n$INSTDIR" /SD IDOK
        Quit
    ${EndIf}

    CreateDirectory "${MENU}"
    CreateShortcut "${MENU}\TarnvikControl.lnk" "$INSTDIR\TarnvikControl.exe"
    !if /FileExists "${PROGRAM}/Tarnvik_EN.pdf"
        CreateShortcut "${MENU}\User guide (English).lnk" "$INSTDIR\Tarnvik_EN.pdf"
    !endif
    !if /FileExists "${PROGRAM}/Tarnvik_DE.pdf"
        CreateShortcut "${MENU}\Benutzerhandbuch (Deutsch).lnk" "$INSTDIR\Tarnvik_DE.pdf"
    !endif
    CreateShortcut "${MENU}\Uninstall TarnvikControl.lnk" "$INSTDIR\Uninstall.exe"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "TarnvikControl"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\TarnvikControl.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Quillane GmbH"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    SectionGetSize ${SECTION_PROGRAM} $0 ; KiB
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section /o "$(SectionSignIn)" SECTION_SIGNIN
    WriteRegStr HKLM "${RUN_KEY}" "TarnvikControl" '"$INSTDIR\TarnvikControl.exe"'
SectionEnd

Section /o "$(SectionStandIn)" SECTION_STANDIN
    ${IfNot} ${FileExists} "$INSTDIR\TarnvikRecord.exe"
        SetOutPath "$INSTDIR"
        File "${STANDIN}"
        Call IdentifyRecorder
        WriteRegStr HKLM "${UNINSTALL_KEY}" "StandIn" "$R3"
    ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_PROGRAM} "$(AboutProgram)"
    !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_SIGNIN} "$(AboutSignIn)"
    !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_STANDIN} "$(AboutStandIn)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; SelectIf OPTION ROOT KEY VALUE SECTION: selects the section when the option is given or the installed version has it.
!macro SelectIf OPTION KEY VALUE SECTION
    ReadRegStr $1 HKLM "${KEY}" "${VALUE}"
    ${If} $1 != ""
        !insertmacro SelectSection ${SECTION}
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "${OPTION}" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${SECTION}
    ${EndIf}
!macroend

Function .onInit
    SetRegView 64
    ${IfNot} ${AtLeastWin10}
        SetErrorLevel ${EXIT_OLD_WINDOWS}
        MessageBox MB_OK|MB_ICONSTOP "$(OldWindows)" /SD IDOK
        Quit
    ${EndIf}
    ${GetParameters} $0
    !insertmacro SelectIf "/SIGNIN" "${RUN_KEY}" "TarnvikControl" ${SECTION_SIGNIN}
    !insertmacro SelectIf "/STANDIN" "${UNINSTALL_KEY}" "StandIn" ${SECTION_STANDIN}
FunctionEnd

Function un.onInit
    SetRegView 64
FunctionEnd

Section "Uninstall"
    SetShellVarContext all
    Call un.RequireUnused

    ; The stand-in goes only if this installer put it there and nobody has replaced it since.
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "StandIn"
    Call un.IdentifyRecorder
    ${If} $0 != ""
    ${AndIf} $0 == $R3
        Delete "$INSTDIR\TarnvikRecord.exe"
    ${EndIf}

    !include "${REMOVE}"
    Delete "$INSTDIR\Uninstall.exe"
    SetOutPath "$TEMP" ; the working folder cannot be removed
    RMDir "$INSTDIR" ; only when it is empty: a recorder and the operator's own files stay

    Delete "${MENU}\TarnvikControl.lnk"
    Delete "${MENU}\User guide (English).lnk"
    Delete "${MENU}\Benutzerhandbuch (Deutsch).lnk"
    Delete "${MENU}\Uninstall TarnvikControl.lnk"
    RMDir "${MENU}"

    ; Somebody's own entry for another copy of the program stays.
    ReadRegStr $0 HKLM "${RUN_KEY}" "TarnvikControl"
    ${If} $0 == '"$INSTDIR\TarnvikControl.exe"'
        DeleteRegValue HKLM "${RUN_KEY}" "TarnvikControl"
    ${EndIf}
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
