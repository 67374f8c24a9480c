; SPDX-License-Identifier: MIT
; The installer for Windows, for all users of the machine. Made by scripts/windows/package, which defines
;   PROGRAM    folder with what is installed           STANDIN   the stand-in recorder's file
;   SETTINGS   settings.nsh as filled in by CMake      OUTPUT    the installer to make
;   CONTENTS   file that names what is in PROGRAM, a folder after what is in it, in lines of
;              !insertmacro ${FOR_FILE} "NAME" and !insertmacro ${FOR_FOLDER} "NAME"
;
; Command line, beside NSIS's own /S (silent) and /D=FOLDER (last, without quotes):
;   /SIGNIN    start the program at sign-in            /STANDIN   install the stand-in recorder, if there is no recorder
; An update keeps folder and choices, also after one that failed.
;
; Exit codes: 0 done, 1 cancelled by the user, 2 failed, 3 the program is running, 4 a file is in use or cannot be
; written, 5 this Windows is too old, 6 the folder holds somebody else's file of the same name. With 3, 5 and 6 nothing
; has been changed, with 4 unless a file could not be written. (The silent uninstaller goes on in a copy of itself and
; gives none, unless it is started with _?=FOLDER as the last argument; it then stays itself.)
;
; The recorder is a product of its own that somebody puts beside the program: a TarnvikRecord.exe that this installer did
; not put there is neither replaced nor removed, nor are libraries that it brought.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
SetDateSave off ; the same files make the same installer, whenever they were built

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include WinVer.nsh
!include "${SETTINGS}"

!define EXIT_RUNNING 3
!define EXIT_FILES 4
!define EXIT_OLD_WINDOWS 5
!define EXIT_FOREIGN_FILE 6

; Version 1903: the first that gives the program UTF-8 as its code page, as its manifest asks.
!define OLDEST_BUILD 18362

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TarnvikControl"
; Has a value for each file that the installer put into the folder.
!define FILES_KEY "${UNINSTALL_KEY}\Files"
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
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveFolderPage
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
LangString InUse ${LANG_ENGLISH} "A file of TarnvikControl is in use, perhaps by a recorder that is still running, or because the guide is open:"
LangString InUse ${LANG_GERMAN} "Eine Datei von TarnvikControl ist in Benutzung, vielleicht von einem noch laufenden Rekorder, oder weil das Handbuch offen ist:"
LangString NotWritten ${LANG_ENGLISH} "The files could not be written to the folder:"
LangString NotWritten ${LANG_GERMAN} "Die Dateien konnten nicht in den Ordner geschrieben werden:"
LangString OldStays ${LANG_ENGLISH} "The installed version could not be removed."
LangString OldStays ${LANG_GERMAN} "Die installierte Version konnte nicht entfernt werden."
LangString OldWindows ${LANG_ENGLISH} "TarnvikControl needs Windows 10 from version 1903, or Windows 11."
LangString OldWindows ${LANG_GERMAN} "TarnvikControl benötigt Windows 10 ab Version 1903 oder Windows 11."
LangString Foreign ${LANG_ENGLISH} "The folder holds a file that TarnvikControl would replace and that is not part of an installed TarnvikControl, perhaps a library of the recorder. Nothing was changed. Please install into another folder, or move the file away:"
LangString Foreign ${LANG_GERMAN} "Im Ordner liegt eine Datei, die TarnvikControl ersetzen würde und die zu keinem installierten TarnvikControl gehört, vielleicht eine Bibliothek des Rekorders. Nichts wurde geändert. Bitte installieren Sie in einen anderen Ordner, oder verschieben Sie die Datei:"

; The folder of the installed version, empty when there is none, and whether that is $INSTDIR (1 or 0).
Var InstalledFolder
Var InstalledHere
; A file in the folder that would be replaced and is not the installed version's, empty when there is none.
Var ForeignFile

; What is done with each packaged file or folder.
; RequireNotInUse: asks to end what uses the file; ends the installer when it stays in use.
!macro RequireNotInUse FILE
    StrCpy $R9 "${FILE}"
    Call ${UN}RequireFileFree
!macroend
; LookAtOwner: puts its path into $ForeignFile, if nothing is there yet, when no installer put the file into the folder.
!macro LookAtOwner FILE
    StrCpy $R9 "${FILE}"
    Call LookAtOwner
!macroend
; Not "File /r": that takes them in the order in which the packaging machine's disk happens to hold them.
!macro PackFile FILE
    File "/oname=${FILE}" "${PROGRAM}\${FILE}"
!macroend
!macro MakeFolder FOLDER
    CreateDirectory "$INSTDIR\${FOLDER}"
!macroend
!macro NoteFile FILE
    WriteRegDWORD HKLM "${FILES_KEY}" "${FILE}" 1
!macroend
!macro RemoveFile FILE
    Delete "$INSTDIR\${FILE}"
!macroend
!macro RemoveFolder FOLDER
    RMDir "$INSTDIR\${FOLDER}"
!macroend
!macro PassOver NAME
!macroend

; ForContents FILE_MACRO FOLDER_MACRO: inserts the macros for all that is packaged.
!macro ForContents FILE_MACRO FOLDER_MACRO
    !define FOR_FILE ${FILE_MACRO}
    !define FOR_FOLDER ${FOLDER_MACRO}
    !include "${CONTENTS}"
    !undef FOR_FILE
    !undef FOR_FOLDER
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
        ; May it be written and deleted, whatever others do with it at the same time? Nothing is done to it yet.
        StrCpy $R1 "$INSTDIR\$R9"
        System::Call 'kernel32::CreateFileW(w R1, i 0x40010000, i 7, p 0, i 3, i 0, p 0) p .R0'
        ${If} $R0 P<> -1
            System::Call 'kernel32::CloseHandle(p R0)'
            Return
        ${EndIf}
        SetErrorLevel ${EXIT_FILES}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)$\n$INSTDIR\$R9" /SD IDCANCEL IDRETRY again
        Quit
FunctionEnd

; Called before anything is changed. Whatever is left in use, be it by a recorder or by somebody who reads the guide,
; would make half an installation.
Function ${UN}RequireUnused
    Call ${UN}RequireProgramEnded
    !insertmacro ForContents RequireNotInUse PassOver
    SetErrorLevel 0
FunctionEnd

; Sets $InstalledFolder and $InstalledHere.
Function ${UN}FindInstalled
    ReadRegStr $InstalledFolder HKLM "${UNINSTALL_KEY}" "InstallLocation"
    StrCpy $InstalledHere 0
    ${If} $InstalledFolder != ""
        ; A folder can be written in several ways, but has one short path.
        GetFullPathName /SHORT $R0 $InstalledFolder
        GetFullPathName /SHORT $R1 $INSTDIR
        ${If} $InstalledFolder == $INSTDIR
            StrCpy $InstalledHere 1
        ${ElseIf} $R0 != ""
        ${AndIf} $R0 == $R1
            StrCpy $InstalledHere 1
        ${EndIf}
    ${EndIf}
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

; Takes back what was entered for $INSTDIR outside of it.
Function ${UN}Unregister
    Delete "${MENU}\TarnvikControl.lnk"
    Delete "${MENU}\User guide (English).lnk"
    Delete "${MENU}\Benutzerhandbuch (Deutsch).lnk"
    Delete "${MENU}\Uninstall TarnvikControl.lnk"
    RMDir "${MENU}"
    ; Somebody's own entry for another copy of the program stays.
    ReadRegStr $R0 HKLM "${RUN_KEY}" "TarnvikControl"
    ${If} $R0 == '"$INSTDIR\TarnvikControl.exe"'
        DeleteRegValue HKLM "${RUN_KEY}" "TarnvikControl"
    ${EndIf}
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
FunctionEnd
!macroend
!define UN ""
!insertmacro CommonFunctions ""
!undef UN
!define UN "un."
!insertmacro CommonFunctions "un."
!undef UN

Function LookAtOwner
    ${If} $ForeignFile != ""
    ${OrIfNot} ${FileExists} "$INSTDIR\$R9"
        Return
    ${EndIf}
    ${If} $InstalledHere = 1
        ClearErrors
        ReadRegDWORD $R0 HKLM "${FILES_KEY}" "$R9"
        ${IfNot} ${Errors}
            Return
        ${EndIf}
    ${EndIf}
    StrCpy $ForeignFile "$INSTDIR\$R9"
FunctionEnd

; Sets $ForeignFile, and names it to the user.
Function FindForeignFile
    Call FindInstalled
    StrCpy $ForeignFile ""
    !insertmacro ForContents LookAtOwner PassOver
    !insertmacro LookAtOwner Uninstall.exe
    ${If} $ForeignFile != ""
        MessageBox MB_OK|MB_ICONSTOP "$(Foreign)$\n$ForeignFile" /SD IDOK
    ${EndIf}
FunctionEnd

Function LeaveFolderPage
    Call FindForeignFile
    ${If} $ForeignFile != ""
        Abort ; the page stays
    ${EndIf}
FunctionEnd

Section "-prepare"
    Call FindForeignFile
    ${If} $ForeignFile != ""
        SetErrorLevel ${EXIT_FOREIGN_FILE}
        Quit
    ${EndIf}
    Call RequireUnused
    ; An older version goes first, so that nothing of it stays behind. What of it is in use it finds by itself.
    ${If} $InstalledFolder != ""
    ${AndIf} ${FileExists} "$InstalledFolder\Uninstall.exe"
        ClearErrors
        ExecWait '"$InstalledFolder\Uninstall.exe" /S _?=$InstalledFolder' $1
        ${If} ${Errors}
            StrCpy $1 2
        ${EndIf}
        ${If} $1 <> 0
            SetErrorLevel $1
            MessageBox MB_OK|MB_ICONSTOP "$(OldStays)" /SD IDOK
            Quit
        ${EndIf}
        ; Started in this way it cannot remove itself, nor its folder.
        Delete "$InstalledFolder\Uninstall.exe"
        RMDir "$InstalledFolder" ; only when it is empty: a recorder and the operator's own files stay
    ${EndIf}
SectionEnd

Section "$(SectionProgram)" SECTION_PROGRAM
    SectionIn RO
    SetShellVarContext all
    Call Register
    ClearErrors
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\Uninstall.exe" ; first, so that half an installation can be removed
    !insertmacro ForContents PassOver MakeFolder
    !insertmacro ForContents PackFile PassOver
    ${If} ${Errors}
        ${If} $InstalledFolder == ""
        ${AndIfNot} ${FileExists} "$INSTDIR\Uninstall.exe"
            Call Unregister ; nothing there to remove or to update
        ${EndIf}
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
SectionEnd

Section /o "$(SectionSignIn)" SECTION_SIGNIN
    ; A choice only: Register does it.
SectionEnd

Section /o "$(SectionStandIn)" SECTION_STANDIN
    ${If} ${FileExists} "$INSTDIR\TarnvikRecord.exe"
        DeleteRegValue HKLM "${UNINSTALL_KEY}" "StandIn"
    ${Else}
        SetOutPath "$INSTDIR"
        File "${STANDIN}"
        Call IdentifyRecorder
        WriteRegStr HKLM "${UNINSTALL_KEY}" "StandIn" "$R3"
    ${EndIf}
SectionEnd

; Writes folder and choices into the registry. This comes before the files: when one of these cannot be written, the old
; version has gone, and without these entries the next run would know neither folder nor choices.
Function Register
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
    !insertmacro ForContents NoteFile PassOver
    !insertmacro NoteFile Uninstall.exe
    ${If} ${SectionIsSelected} ${SECTION_SIGNIN}
        WriteRegStr HKLM "${RUN_KEY}" "TarnvikControl" '"$INSTDIR\TarnvikControl.exe"'
    ${EndIf}
    ${If} ${SectionIsSelected} ${SECTION_STANDIN}
        WriteRegStr HKLM "${UNINSTALL_KEY}" "StandIn" "chosen" ; no recorder is known by that
    ${EndIf}
FunctionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_PROGRAM} "$(AboutProgram)"
    !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_SIGNIN} "$(AboutSignIn)"
    !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_STANDIN} "$(AboutStandIn)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; SelectIfGiven OPTION SECTION: selects the section when the option is on the command line, which is in $0.
!macro SelectIfGiven OPTION SECTION
    ClearErrors
    ${GetOptions} $0 "${OPTION}" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${SECTION}
    ${EndIf}
!macroend

Function .onInit
    SetRegView 64
    ${IfNot} ${AtLeastBuild} ${OLDEST_BUILD}
        SetErrorLevel ${EXIT_OLD_WINDOWS}
        MessageBox MB_OK|MB_ICONSTOP "$(OldWindows)" /SD IDOK
        Quit
    ${EndIf}
    ${GetParameters} $0
    !insertmacro SelectIfGiven "/SIGNIN" ${SECTION_SIGNIN}
    !insertmacro SelectIfGiven "/STANDIN" ${SECTION_STANDIN}

    ; The choices of the installed version. Somebody's own entry for another copy of the program is none.
    Call FindInstalled
    ${If} $InstalledFolder == ""
        StrCpy $InstalledFolder $INSTDIR
    ${EndIf}
    ReadRegStr $1 HKLM "${RUN_KEY}" "TarnvikControl"
    ${If} $1 == '"$InstalledFolder\TarnvikControl.exe"'
        !insertmacro SelectSection ${SECTION_SIGNIN}
    ${EndIf}
    ReadRegStr $1 HKLM "${UNINSTALL_KEY}" "StandIn"
    ${If} $1 != ""
        !insertmacro SelectSection ${SECTION_STANDIN}
    ${EndIf}
FunctionEnd

Function un.onInit
    SetRegView 64
FunctionEnd

Section "Uninstall"
    SetShellVarContext all
    Call un.RequireUnused
    Call un.FindInstalled

    ; The stand-in goes only if this installer put it there and nobody has replaced it since.
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "StandIn"
    Call un.IdentifyRecorder
    ${If} $InstalledHere = 1
    ${AndIf} $0 != ""
    ${AndIf} $0 == $R3
        Delete "$INSTDIR\TarnvikRecord.exe"
    ${EndIf}

    !insertmacro ForContents RemoveFile RemoveFolder
    Delete "$INSTDIR\Uninstall.exe"
    SetOutPath "$TEMP" ; the working folder cannot be removed
    RMDir "$INSTDIR" ; only when it is empty: a recorder and the operator's own files stay

    ; An uninstaller that was left in another folder leaves the installed version's entries alone.
    ${If} $InstalledHere = 1
        Call un.Unregister
    ${EndIf}
SectionEnd
