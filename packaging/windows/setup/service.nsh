; The service as the service manager sees it. The program's own exit codes do not tell: they are 0 also when the service
; could not be installed or started. Takes the registers $0 to $4, and $6 to
; $8 for waiting.

!define SERVICE_MISSING 0
!define SERVICE_STOPPED 1
!define SERVICE_START_PENDING 2
!define SERVICE_RUNNING 4

!define SC_MANAGER_CONNECT 0x0001
!define SC_MANAGER_CREATE_SERVICE 0x0002
!define SERVICE_QUERY_STATUS 0x0004
!define SERVICE_STOP 0x0020
!define DELETE_ACCESS 0x10000
!define SYNCHRONIZE 0x100000
!define ERROR_SERVICE_DOES_NOT_EXIST 1060
!define ERROR_SERVICE_MARKED_FOR_DELETE 1072

Var ServiceState ; what the manager says; 0 when there is no service, -1 when the manager does not tell
Var ServiceProcess

!macro OpenService rights
    System::Call 'advapi32::OpenSCManagerW(p 0, p 0, i ${SC_MANAGER_CONNECT}) p .r0'
    System::Call 'advapi32::OpenServiceW(p r0, w "${SERVICE}", i ${rights}) p .r1 ?e'
    Pop $2 ; the error
!macroend

!macro CloseService
    System::Call 'advapi32::CloseServiceHandle(p r1)'
    System::Call 'advapi32::CloseServiceHandle(p r0)'
!macroend

!macro DefineService un
    ; The program that is registered as the service, empty when there is none, in $0.
    Function ${un}ReadServiceProgram
        ReadRegStr $0 HKLM "SYSTEM\CurrentControlSet\Services\${SERVICE}" ImagePath
        System::Call 'shlwapi::PathRemoveArgsW(w r0 r0)'
        System::Call 'shlwapi::PathUnquoteSpacesW(w r0 r0)'
        ClearErrors
    FunctionEnd

    Function ${un}QueryService
        StrCpy $ServiceState -1
        StrCpy $ServiceProcess 0
        !insertmacro OpenService ${SERVICE_QUERY_STATUS}
        ${If} $2 = ${ERROR_SERVICE_DOES_NOT_EXIST}
            StrCpy $ServiceState ${SERVICE_MISSING}
        ${EndIf}
        System::Call '*(i, i, i, i, i, i, i, i, i) p .r3'
        System::Call 'advapi32::QueryServiceStatusEx(p r1, i 0, p r3, i 36, *i) i .r4'
        ${If} $4 <> 0
            System::Call '*$3(i, i .r4, i, i, i, i, i, i .r2, i)'
            StrCpy $ServiceState $4
            StrCpy $ServiceProcess $2
        ${EndIf}
        System::Free $3
        !insertmacro CloseService
    FunctionEnd

    ; Waits for the end of its process, at most a minute. Whoever calls looks afterwards.
    Function ${un}StopService
        Call ${un}QueryService
        ${If} $ServiceState <> ${SERVICE_MISSING}
        ${AndIf} $ServiceState <> ${SERVICE_STOPPED}
            ${Say} "Stopping the service"
            !insertmacro OpenService ${SERVICE_STOP}
            System::Call '*(i, i, i, i, i, i, i) p .r3'
            System::Call 'advapi32::ControlService(p r1, i 1, p r3)'
            System::Free $3
            !insertmacro CloseService
            System::Call 'kernel32::OpenProcess(i ${SYNCHRONIZE}, i 0, i $ServiceProcess) p .r0'
            System::Call 'kernel32::WaitForSingleObject(p r0, i 60000) i .r1'
            System::Call 'kernel32::CloseHandle(p r0)'
            ${If} $1 = 258 ; WAIT_TIMEOUT
                ${Say} "The service has not ended within a minute"
            ${EndIf}
        ${EndIf}
    FunctionEnd
!macroend

!insertmacro DefineService ""
!insertmacro DefineService "un."

; Runs for some seconds already, or starts within half a minute and goes on running: $4 is 1, otherwise 0.
Function WaitForRunningService
    StrCpy $6 0
    StrCpy $7 0
    ${DoWhile} $6 < 60
        Sleep 500
        IntOp $6 $6 + 1
        Call QueryService
        ${If} $ServiceState = ${SERVICE_RUNNING}
        ${AndIf} $ServiceProcess = $8
            IntOp $7 $7 + 1
            ${IfThen} $7 >= 6 ${|} ${Break} ${|}
        ${Else}
            ${IfThen} $7 > 0 ${|} ${Break} ${|} ; it ran, and has ended
            StrCpy $8 $ServiceProcess
        ${EndIf}
        ${IfThen} $ServiceState <= ${SERVICE_STOPPED} ${|} ${Break} ${|}
    ${Loop}
    StrCpy $4 0
    ${IfThen} $7 >= 6 ${|} StrCpy $4 1 ${|}
FunctionEnd

; Whether this account may install services: $4 is 1, otherwise 0.
Function MayInstallServices
    StrCpy $4 0
    System::Call 'advapi32::OpenSCManagerW(p 0, p 0, i ${SC_MANAGER_CREATE_SERVICE}) p .r0'
    ${If} $0 P<> 0
        StrCpy $4 1
    ${EndIf}
    System::Call 'advapi32::CloseServiceHandle(p r0)'
FunctionEnd

; What the program's own removal may have left: $3 is the error.
Function un.DeleteService
    !insertmacro OpenService ${DELETE_ACCESS}
    System::Call 'advapi32::DeleteService(p r1) ?e'
    Pop $3
    !insertmacro CloseService
FunctionEnd
