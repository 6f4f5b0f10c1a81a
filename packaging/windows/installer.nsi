; The installer for Windows, made by packaging/windows/package, which defines
;   VERSION  the version
;   FILES    a file of macros: PutFiles, RemoveFiles, RemoveFolders and EachProgram
;   SIZE     of all files, in kilobytes
;   OUT      the installer
;   APPLICATION  where the application is among the files
;
; Command line: /S (no questions), /AllUsers or /CurrentUser, /D=FOLDER (last). Exit codes:
;   0  done
;   1  the user stopped it
;   2  a file could not be written; an earlier installation is gone or incomplete: install again
;   3  everything is in place, but Windows did not register the COM library
;   4  nothing was changed: a program of QXControls is running, or a host uses the COM library
;   5  nothing was changed: this is not a 64-bit Windows
;   6  nothing was changed: /AllUsers needs administrator rights
; The uninstaller: /S, and /PURGE to remove the user's preferences and records too; 0, 1, 4, 6, and
; 2 if a file could not be removed.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
Name "QXControls"
OutFile "${OUT}"
ManifestDPIAware true
XPStyle on
ShowInstDetails nevershow
AllowSkipFiles off ; a file that cannot be written ends the installation
BrandingText " "
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "QXControls"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "QXControls Setup"
VIAddVersionKey LegalCopyright "The QXControls authors"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "QXControls"
!define MULTIUSER_USE_PROGRAMFILES64
!include MultiUser.nsh
!include MUI2.nsh
!include x64.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include "${FILES}"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\QXControls"
!define DOCUMENT "QXControls.Document"

!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE German

LangString InUse ${LANG_ENGLISH} "Close this program, which is in use, and try again:"
LangString InUse ${LANG_GERMAN} "Dieses Programm wird gerade benutzt. Bitte schließen und noch einmal versuchen:"
LangString NotRegistered ${LANG_ENGLISH} "The programs are installed, but Windows did not register the COM library. Hosts that create its objects will not find them."
LangString NotRegistered ${LANG_GERMAN} "Die Programme sind installiert, aber Windows hat die COM-Bibliothek nicht registriert. Anwendungen, die ihre Objekte erzeugen, finden sie nicht."
LangString NoRights ${LANG_ENGLISH} "An installation for all users needs administrator rights."
LangString NoRights ${LANG_GERMAN} "Für eine Installation für alle Benutzer sind Administratorrechte erforderlich."
LangString Not64 ${LANG_ENGLISH} "QXControls needs a 64-bit Windows."
LangString Not64 ${LANG_GERMAN} "QXControls benötigt ein 64-Bit-Windows."
LangString Purge ${LANG_ENGLISH} "Also delete your preferences, and the backups and records of writes to keyboards?"
LangString Purge ${LANG_GERMAN} "Auch Ihre Einstellungen sowie die Sicherungen und Protokolle der Schreibvorgänge löschen?"
LangString Manual ${LANG_ENGLISH} "Manual"
LangString Manual ${LANG_GERMAN} "Handbuch"
LangString Prompt ${LANG_ENGLISH} "Command Prompt for qxconf"
LangString Prompt ${LANG_GERMAN} "Eingabeaufforderung für qxconf"
LangString DocumentName ${LANG_ENGLISH} "Keyboard document"
LangString DocumentName ${LANG_GERMAN} "Tastatur-Dokument"

; Nothing is installed if a file is in use: the installation would be incomplete.
!macro RequireFree FILE
    ${If} ${FileExists} "$INSTDIR\${FILE}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${FILE}" a
        ${If} ${Errors}
            MessageBox MB_OK|MB_ICONEXCLAMATION "$(InUse)$\n$\n$INSTDIR\${FILE}" /SD IDOK
            SetErrorLevel 4
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

; The system's regsvr32 of each word size registers the server of that word size; a system that
; cannot run 32-bit programs does not have the 32-bit one.
!macro Register SWITCHES RESULT
    StrCpy $1 ""
    ${If} $MultiUser.InstallMode == "CurrentUser"
        StrCpy $1 "/n /i:user"
    ${EndIf}
    ExecWait '"$SYSDIR\regsvr32.exe" /s ${SWITCHES} $1 "$INSTDIR\bin\QXControls.ocx"' ${RESULT}
    ${If} ${FileExists} "$WINDIR\SysWOW64\regsvr32.exe"
        ExecWait '"$WINDIR\SysWOW64\regsvr32.exe" /s ${SWITCHES} $1 "$INSTDIR\bin32\QXControls.ocx"' $2
        IntOp ${RESULT} ${RESULT} | $2
    ${EndIf}
!macroend

; Without this check, a silent installation would show a message and wait.
!macro RequireRights
    ${GetParameters} $1
    ClearErrors
    ${GetOptions} $1 "/AllUsers" $2
    ${IfNot} ${Errors}
        UserInfo::GetAccountType
        Pop $2
        ${If} $2 != "Admin"
            MessageBox MB_OK|MB_ICONSTOP "$(NoRights)" /SD IDOK
            SetErrorLevel 6
            Quit
        ${EndIf}
    ${EndIf}
!macroend

Function .onInit
    ${IfNot} ${RunningX64}
        MessageBox MB_OK|MB_ICONSTOP "$(Not64)" /SD IDOK
        SetErrorLevel 5
        Quit
    ${EndIf}
    !insertmacro RequireRights
    SetRegView 64
    StrCpy $9 $INSTDIR ; what /D names
    !insertmacro MULTIUSER_INIT
    ReadRegStr $8 SHCTX "${UNINSTALL}" InstallLocation
    ${If} $9 != ""
        StrCpy $INSTDIR $9
    ${ElseIf} $8 != ""
        StrCpy $INSTDIR $8
    ${EndIf}
FunctionEnd

Function un.onInit
    !insertmacro RequireRights
    SetRegView 64
    !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section
    !insertmacro EachProgram RequireFree
    ; An earlier version goes, with the files that this one no longer has.
    ReadRegStr $8 SHCTX "${UNINSTALL}" InstallLocation
    ${If} $8 != ""
    ${AndIf} ${FileExists} "$8\uninstall.exe"
        ExecWait '"$8\uninstall.exe" /S /$MultiUser.InstallMode _?=$8' $0
        ${If} $0 != 0
            SetErrorLevel $0
            Quit
        ${EndIf}
        Delete "$8\uninstall.exe"
        RMDir "$8"
    ${EndIf}

    !insertmacro PutFiles
    WriteUninstaller "$INSTDIR\uninstall.exe"

    WriteRegStr SHCTX "${UNINSTALL}" DisplayName "QXControls"
    WriteRegStr SHCTX "${UNINSTALL}" DisplayVersion "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL}" Publisher "The QXControls authors"
    WriteRegStr SHCTX "${UNINSTALL}" InstallLocation "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
    WriteRegStr SHCTX "${UNINSTALL}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode'
    WriteRegDWORD SHCTX "${UNINSTALL}" EstimatedSize ${SIZE}
    WriteRegDWORD SHCTX "${UNINSTALL}" NoModify 1
    WriteRegDWORD SHCTX "${UNINSTALL}" NoRepair 1

    CreateDirectory "$SMPROGRAMS\QXControls"
    CreateShortCut "$SMPROGRAMS\QXControls\$(Manual).lnk" "$INSTDIR\manual\index.html"
    SetOutPath "$DOCUMENTS" ; where the prompt begins
    CreateShortCut "$SMPROGRAMS\QXControls\$(Prompt).lnk" "$SYSDIR\cmd.exe" \
        '/k "set PATH=$INSTDIR\bin;%PATH%&& qxconf"'
    SetOutPath "$INSTDIR"
!ifdef APPLICATION
    CreateShortCut "$SMPROGRAMS\QXControls\QXControls.lnk" "$INSTDIR\bin\qx-configurator.exe"
    WriteRegStr SHCTX "${UNINSTALL}" DisplayIcon "$INSTDIR\bin\qx-configurator.exe"
    ; Documents are JSON files; the application is offered for them, and takes none from others.
    WriteRegStr SHCTX "Software\Classes\${DOCUMENT}" "" "$(DocumentName)"
    WriteRegStr SHCTX "Software\Classes\${DOCUMENT}\DefaultIcon" "" "$INSTDIR\bin\qx-configurator.exe,0"
    WriteRegStr SHCTX "Software\Classes\${DOCUMENT}\shell\open\command" "" '"$INSTDIR\bin\qx-configurator.exe" "%1"'
    WriteRegStr SHCTX "Software\Classes\.json\OpenWithProgids" "${DOCUMENT}" ""
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)' ; file types have changed
!endif

    !insertmacro Register "" $0
    ${If} $0 != 0
        MessageBox MB_OK|MB_ICONEXCLAMATION "$(NotRegistered)" /SD IDOK
        SetErrorLevel 3
    ${EndIf}
SectionEnd

Section Uninstall
    !insertmacro EachProgram RequireFree
    !insertmacro Register "/u" $0
    ClearErrors
    !insertmacro RemoveFiles
    ${If} ${Errors}
        SetErrorLevel 2
    ${EndIf}
    !insertmacro RemoveFolders
    Delete "$INSTDIR\uninstall.exe"
    SetOutPath "$TEMP"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\QXControls\*.lnk"
    RMDir "$SMPROGRAMS\QXControls"
    DeleteRegKey SHCTX "${UNINSTALL}"
    DeleteRegKey SHCTX "Software\Classes\${DOCUMENT}"
    DeleteRegValue SHCTX "Software\Classes\.json\OpenWithProgids" "${DOCUMENT}"
    DeleteRegKey /ifempty SHCTX "Software\Classes\.json\OpenWithProgids"
    DeleteRegKey /ifempty SHCTX "Software\Classes\.json"

    ${GetParameters} $1
    ClearErrors
    ${GetOptions} $1 "/PURGE" $2
    ${If} ${Errors}
        MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(Purge)" /SD IDNO IDNO keep
    ${EndIf}
    SetShellVarContext current
    DeleteRegKey HKCU "Software\Tandor\ConfigurationApp"
    DeleteRegKey /ifempty HKCU "Software\Tandor"
    DeleteRegKey HKCU "Software\qxcontrols" ; the documents that the application opened last
    RMDir /r "$LOCALAPPDATA\qxcontrols"
keep:
SectionEnd
