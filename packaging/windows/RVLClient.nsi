; The setup program of RVLClient for 64-bit Windows, built by build-installer. README.md tells how it is used.
;
; An upgrade must never leave a workstation without a running service, for the next program comes from the server:
; - The new files are whole on the disk before the service stops, and each takes its place in one move.
; - When the new service does not start, or does not go on running, the previous files and their service come back, also
;   the service of another copy of the program.
; - A silent run leaves a program of the same or a newer version alone as long as its service runs or can be started:
;   the server may have updated it since, and a start script may run the setup again and again. /FORCE replaces it.
;
; What an uninstall leaves is what an administrator wants back after installing anew: the database with its settings and
; with the front ends of every user, and these front ends themselves. /PURGE removes the data folder and the front ends
; in the program's folder as well; those in the users' own folders are the server's to remove, before the uninstall.

Target amd64-unicode
!include LogicLib.nsh
!include FileFunc.nsh
!include MUI2.nsh

!define PROGRAM RVLClient.exe
!define SERVICE RVLClient
!define TITLE "Ravelin Client"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\RVLClient"
!define CLIENT_KEY "SOFTWARE\Ravelin\Client"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define RUN_VALUE RVLClientHelper
!define EVENT_KEY "SYSTEM\CurrentControlSet\Services\EventLog\Application\RVLClient"
!define SHORTCUT "$SMPROGRAMS\Access Switchboard.lnk"

; Exit codes, besides 0 and 1 for a setup that was cancelled
!define EXIT_NOTHING_DONE 2
!define EXIT_ROLLED_BACK 3
!define EXIT_NO_SERVICE 4
!define EXIT_OTHER_SETUP 1618 ; as the system's own installer has it

!getdllversion "${SOURCE}/${PROGRAM}" PROGRAM_
!define VERSION ${PROGRAM_1}.${PROGRAM_2}.${PROGRAM_4} ; as the program shows it

Name "${TITLE}"
OutFile "${OUTPUT}"
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestDPIAware true
ManifestSupportedOS all
InstallDir "$PROGRAMFILES64\Ravelin\Client"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" InstallLocation
BrandingText "${TITLE} ${VERSION}"
ShowInstDetails show
ShowUninstDetails show

VIProductVersion ${PROGRAM_1}.${PROGRAM_2}.${PROGRAM_3}.${PROGRAM_4}
VIAddVersionKey CompanyName Ravelin
VIAddVersionKey FileDescription "${TITLE} Setup"
VIAddVersionKey FileVersion ${PROGRAM_1}.${PROGRAM_2}.${PROGRAM_3}.${PROGRAM_4}
VIAddVersionKey LegalCopyright "Copyright (c) 2026 The RVLClient authors"
VIAddVersionKey OriginalFilename RVLClientSetup.exe
VIAddVersionKey ProductName "${TITLE}"
VIAddVersionKey ProductVersion ${PROGRAM_1}.${PROGRAM_2}.${PROGRAM_3}.${PROGRAM_4}

!define MUI_ICON "${ICONS}/application.ico"
!define MUI_UNICON "${ICONS}/application.ico"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

!include setup/log.nsh
!include setup/service.nsh
!include setup/processes.nsh
!include setup/replacement.nsh

Var Force
Var Program ; whose service is to run
Var PreviousProgram ; whose service comes back when the new one fails; empty when there is none

; Ends the setup with the code, after having told why.
!macro Fail code text
    ${Say} `${text}`
    MessageBox MB_OK|MB_ICONSTOP `${text}` /SD IDOK
    SetErrorLevel ${code}
    Abort `${text}`
!macroend
!define Fail `!insertmacro Fail`

!macro Begin un
    SetShellVarContext all
    SetRegView 64
    Call ${un}OpenLog
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "Global\RVLClientSetup") p ?e'
    Pop $0
    ${If} $0 = 183 ; ERROR_ALREADY_EXISTS
    ${OrIf} $0 = 5 ; of an account that lets nobody else have it
        ${Say} "Another setup is at work"
        MessageBox MB_OK|MB_ICONSTOP "Another setup of ${TITLE} is at work." /SD IDOK
        SetErrorLevel ${EXIT_OTHER_SETUP}
        Quit
    ${EndIf}
    !insertmacro EnableDebugPrivilege
!macroend

Function .onInit
    !insertmacro Begin ""
    StrCpy $Force 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/FORCE" $1
    ${IfNot} ${Errors}
        StrCpy $Force 1
    ${EndIf}
FunctionEnd

Function un.onInit
    !insertmacro Begin "un."
FunctionEnd

; $5 is -1, 0 or 1 when the installed program is older, as old or newer; without one, it is older.
Function CompareVersions
    StrCpy $5 -1
    ClearErrors
    GetDLLVersion "$INSTDIR\${PROGRAM}" $0 $1
    ${If} ${Errors}
        ClearErrors
        Return
    ${EndIf}
    IntOp $2 ${PROGRAM_1} << 16
    IntOp $2 $2 | ${PROGRAM_2}
    IntOp $3 ${PROGRAM_3} << 16
    IntOp $3 $3 | ${PROGRAM_4}
    ${If} $0 = $2
    ${AndIf} $1 = $3
        StrCpy $5 0
    ${ElseIf} $0 U> $2
        StrCpy $5 1
    ${ElseIf} $0 = $2
    ${AndIf} $1 U> $3
        StrCpy $5 1
    ${EndIf}
FunctionEnd

; A self-update that is at work ends first, as long as that does not take for ever.
Function WaitForSelfUpdate
    ${For} $0 1 120
        ReadRegDWORD $1 HKLM "${CLIENT_KEY}" Updating
        ${IfThen} $1 <> 1 ${|} ${Break} ${|}
        ${If} $0 = 1
            ${Say} "Waiting for the end of a self-update"
        ${EndIf}
        Sleep 1000
    ${Next}
    ClearErrors
FunctionEnd

Function FindPreviousProgram
    StrCpy $PreviousProgram ""
    Call ReadServiceProgram
    ${If} $0 != ""
    ${AndIf} ${FileExists} $0
        StrCpy $PreviousProgram $0
    ${ElseIf} ${FileExists} "$INSTDIR\${PROGRAM}"
        StrCpy $PreviousProgram "$INSTDIR\${PROGRAM}"
    ${EndIf}
FunctionEnd

; Has $Program make itself the installed and running service: $4 is 1 when it is, otherwise 0.
Function InstallService
    ${Say} "Starting the service of $Program"
    nsExec::Exec /TIMEOUT=120000 '"$Program" -deploy'
    Pop $0
    ${If} $0 != 0
        ${Say} "The installation of the service has ended with $0"
    ${EndIf}
    Call WaitForRunningService
    Call ReadServiceProgram
    ${If} $0 != $Program
        StrCpy $4 0
    ${EndIf}
FunctionEnd

; Whether the files are to be replaced: $9 is 1, otherwise 0.
Function DecideReplacement
    StrCpy $9 1
    Call CompareVersions
    ${IfThen} $5 < 0 ${|} Return ${|}
    ${IfThen} $Force = 1 ${|} Return ${|}
    ${IfNot} ${Silent}
        ${IfThen} $5 = 0 ${|} Return ${|}
        MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "The installed program is newer than version ${VERSION} of \
            this setup. Do you want to replace it?" IDYES replace
        Call InstallService
        StrCpy $9 0
        replace:
        Return
    ${EndIf}
    ${Say} "The installed program is as new as version ${VERSION}, or newer: it stays if its service runs"
    Call InstallService
    ${If} $4 = 1
        StrCpy $9 0
    ${EndIf}
FunctionEnd

Function StopEverything
    Call StopService
    Call EndProcesses
FunctionEnd

Function GoBack
    ${Say} "Going back to the previous version"
    Call StopEverything
    ${If} ${FileExists} "${PREVIOUS}\${PROGRAM}"
        StrCpy $8 "${PREVIOUS}"
        Call MoveFiles
    ${Else}
        !insertmacro ForEachFile RemoveFile
    ${EndIf}
    Call RemoveWorkFolders
    SetOutPath $TEMP
    RMDir "$INSTDIR" ; unless it is in use
    StrCpy $Program $PreviousProgram
    Call InstallService
    ${If} $4 = 1
        ${Fail} ${EXIT_ROLLED_BACK} "Version ${VERSION} could not be installed. The previous version runs again."
    ${EndIf}
    ${Fail} ${EXIT_NO_SERVICE} "Neither version ${VERSION} nor the previous one runs. See $INSTDIR\RVLClient.log."
FunctionEnd

Function UnpackFiles
    RMDir /r "${NEW}"
    SetOutPath "${NEW}"
    ClearErrors
    !insertmacro ForEachFile UnpackFile
    SetOutPath "$INSTDIR"
    ${If} ${Errors}
        Call RemoveWorkFolders
        ${Fail} ${EXIT_NOTHING_DONE} "The files cannot be written to $INSTDIR. Nothing has been changed."
    ${EndIf}
    Call KeepFiles
    ${If} $9 = 0
        Call RemoveWorkFolders
        ${Fail} ${EXIT_NOTHING_DONE} "The previous files cannot be kept in $INSTDIR. Nothing has been changed."
    ${EndIf}
FunctionEnd

Function ReplaceFiles
    Call UnpackFiles
    Call StopEverything
    StrCpy $8 "${NEW}"
    ${Say} "Replacing the files"
    Call MoveFiles
    ${If} $9 = 0
    ${AndIf} $PreviousProgram != ""
        Call GoBack
    ${EndIf}
FunctionEnd

Function WriteUninstallEntry
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    GetDLLVersion "$INSTDIR\${PROGRAM}" $0 $1
    IntOp $2 $0 >> 16
    IntOp $3 $0 & 0xFFFF
    IntOp $4 $1 & 0xFFFF
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayName "${TITLE}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayVersion "$2.$3.$4"
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" VersionMajor $2
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" VersionMinor $3
    WriteRegStr HKLM "${UNINSTALL_KEY}" Publisher Ravelin
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\${PROGRAM},0"
    WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoRepair 1
    SectionGetSize 0 $0
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" EstimatedSize $0
FunctionEnd

Section
    AddSize ${SIZE}
    ${Say} "Setup of version ${VERSION} into $INSTDIR"
    Call MayInstallServices
    ${If} $4 = 0
        ${Fail} ${EXIT_NOTHING_DONE} "Only administrators may install ${TITLE}."
    ${EndIf}
    Call WaitForSelfUpdate
    StrCpy $Program "$INSTDIR\${PROGRAM}"
    Call FindPreviousProgram
    Call DecideReplacement
    ${If} $9 = 1
        Call ReplaceFiles
        Call InstallService
        ${If} $4 = 0
        ${AndIf} $PreviousProgram != ""
            Call GoBack
        ${EndIf}
    ${EndIf}
    StrCpy $9 $4
    Call RemoveWorkFolders
    Call WriteUninstallEntry
    CreateShortcut "${SHORTCUT}" "$INSTDIR\${PROGRAM}"
    ${If} $9 = 0
        ${Fail} ${EXIT_NO_SERVICE} "${TITLE} is installed, but its service does not run. See $INSTDIR\RVLClient.log."
    ${EndIf}
    ${Say} "The service runs"
SectionEnd

; The helper's entry names the copy of the program that was installed last, which may be another one.
Function un.DeleteOurRunEntry
    ReadRegStr $0 HKLM "${RUN_KEY}" ${RUN_VALUE}
    StrLen $1 '"$INSTDIR\${PROGRAM}"'
    StrCpy $0 $0 $1
    ${If} $0 == '"$INSTDIR\${PROGRAM}"'
        DeleteRegValue HKLM "${RUN_KEY}" ${RUN_VALUE}
    ${EndIf}
FunctionEnd

Function un.RemoveService
    Call un.StopService
    nsExec::Exec /TIMEOUT=120000 '"$INSTDIR\${PROGRAM}" -remove-silent'
    Pop $0
    Call un.QueryService
    ${If} $ServiceState <> ${SERVICE_MISSING}
        Call un.DeleteService
        Call un.QueryService
    ${EndIf}
    ${If} $ServiceState = ${SERVICE_STOPPED}
    ${AndIf} $3 = ${ERROR_SERVICE_MARKED_FOR_DELETE}
        ${Say} "The service goes when the last program that looks at it closes, or with the next start"
    ${ElseIf} $ServiceState <> ${SERVICE_MISSING}
        ${Fail} ${EXIT_NOTHING_DONE} "The service cannot be removed. ${TITLE} stays installed."
    ${EndIf}
    DeleteRegKey HKLM "${EVENT_KEY}"
    DeleteRegValue HKLM "${CLIENT_KEY}" Updating
    DeleteRegValue HKLM "${CLIENT_KEY}" TempBinaryPath
    DeleteRegKey /ifempty HKLM "${CLIENT_KEY}"
    DeleteRegKey /ifempty HKLM "SOFTWARE\Ravelin"
FunctionEnd

; Links to other places, which users may make in the data folder, are removed and not followed.
Function un.Purge
    ${Say} "Removing the data in $APPDATA\Ravelin\Client and $INSTDIR\Frontends"
    nsExec::Exec '"$SYSDIR\cmd.exe" /c rd /s /q "$APPDATA\Ravelin\Client"'
    Pop $0
    nsExec::Exec '"$SYSDIR\cmd.exe" /c rd /s /q "$INSTDIR\Frontends"'
    Pop $0
    Delete "$INSTDIR\RVLClient.mdb"
    RMDir "$APPDATA\Ravelin"
FunctionEnd

Function un.RemoveFiles
    !insertmacro ForEachFile RemoveFile
    Delete "$INSTDIR\RVLClient.log"
    Delete "$INSTDIR\RVLClient.new"
    Delete "$INSTDIR\RVLClient.previous"
    RMDir /r "${NEW}"
    RMDir /r "${PREVIOUS}"
    ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
        ${Fail} ${EXIT_NOTHING_DONE} "$INSTDIR\${PROGRAM} cannot be deleted. Uninstall again when nobody runs it."
    ${EndIf}
    Delete "${SHORTCUT}"
    Delete "$INSTDIR\Uninstall.exe"
FunctionEnd

Section Uninstall
    ${Say} "Uninstalling from $INSTDIR"
    Call un.ReadServiceProgram
    ${If} $0 == ""
    ${OrIf} $0 == "$INSTDIR\${PROGRAM}"
        Call un.RemoveService
    ${Else}
        ${Say} "The service is that of $0: it stays"
    ${EndIf}
    Call un.EndProcesses
    Call un.DeleteOurRunEntry
    Call un.RemoveFiles
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/PURGE" $1
    ${IfNot} ${Errors}
        Call un.Purge
    ${EndIf}
    SetOutPath $TEMP ; out of the folder that is to go
    RMDir "$INSTDIR"
    RMDir "$PROGRAMFILES64\Ravelin"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ${Say} "Uninstalled"
SectionEnd
