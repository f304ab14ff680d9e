; The processes of the program in $INSTDIR, in all sessions. Takes the registers $0 to $7.

!include WinMessages.nsh

!define TH32CS_SNAPPROCESS 2
!define TOKEN_ADJUST_PRIVILEGES 0x0020
!define SE_PRIVILEGE_ENABLED 2
!define PROCESS_TERMINATE 0x0001
!define PROCESS_QUERY_LIMITED_INFORMATION 0x1000

Var Processes ; how many were found
Var Terminating

; With it an administrator may open the processes of other users as well.
!macro EnableDebugPrivilege
    System::Call 'advapi32::OpenProcessToken(p -1, i ${TOKEN_ADJUST_PRIVILEGES}, *p .r0)'
    System::Call '*(i 1, i 0, i 0, i ${SE_PRIVILEGE_ENABLED}) p .r1' ; TOKEN_PRIVILEGES
    IntPtrOp $2 $1 + 4 ; its LUID
    System::Call 'advapi32::LookupPrivilegeValueW(p 0, w "SeDebugPrivilege", p r2)'
    System::Call 'advapi32::AdjustTokenPrivileges(p r0, i 0, p r1, i 0, p 0, p 0)'
    System::Free $1
    System::Call 'kernel32::CloseHandle(p r0)'
!macroend

!macro DefineProcesses un
    ; $2 is a process id: $5 is its open handle when it is one of ours, otherwise 0.
    Function ${un}OpenOurProcess
        IntOp $4 ${PROCESS_QUERY_LIMITED_INFORMATION} | ${PROCESS_TERMINATE}
        IntOp $4 $4 | ${SYNCHRONIZE}
        System::Call 'kernel32::OpenProcess(i r4, i 0, i r2) p .r5'
        System::Call 'kernel32::QueryFullProcessImageNameW(p r5, i 0, w .r6, *i ${NSIS_MAX_STRLEN})'
        ${If} $6 != "$INSTDIR\${PROGRAM}"
            System::Call 'kernel32::CloseHandle(p r5)'
            StrCpy $5 0
        ${EndIf}
    FunctionEnd

    ; Counts our processes and, when $Terminating is 1, ends them at once.
    Function ${un}VisitProcesses
        StrCpy $Processes 0
        System::Call 'kernel32::CreateToolhelp32Snapshot(i ${TH32CS_SNAPPROCESS}, i 0) p .r0'
        System::Call '*(i 568, i, i, i, p, i, i, i, i, i, &w260, i) p .r1' ; PROCESSENTRY32W
        System::Call 'kernel32::Process32FirstW(p r0, p r1) i .r3'
        ${DoWhile} $3 <> 0
            System::Call '*$1(i, i, i .r2, i, p, i, i, i, i, i, &w260 .r6, i)'
            ${If} $6 == "${PROGRAM}"
                Call ${un}OpenOurProcess
                ${If} $5 P<> 0
                    IntOp $Processes $Processes + 1
                    ${If} $Terminating = 1
                        ${Say} "Ending process $2"
                        System::Call 'kernel32::TerminateProcess(p r5, i 1)'
                        System::Call 'kernel32::WaitForSingleObject(p r5, i 5000)'
                    ${EndIf}
                    System::Call 'kernel32::CloseHandle(p r5)'
                ${EndIf}
            ${EndIf}
            System::Call 'kernel32::Process32NextW(p r0, p r1) i .r3'
        ${Loop}
        System::Free $1
        System::Call 'kernel32::CloseHandle(p r0)'
    FunctionEnd

    ; Asks the windows that the user of this session sees to close. Helpers have none.
    Function ${un}CloseWindows
        StrCpy $0 0
        ${Do}
            FindWindow $0 "" "" 0 $0
            ${IfThen} $0 P= 0 ${|} ${ExitDo} ${|}
            System::Call 'user32::IsWindowVisible(p r0) i .r1'
            ${If} $1 <> 0
                System::Call 'user32::GetWindowThreadProcessId(p r0, *i .r2)'
                Call ${un}OpenOurProcess
                ${If} $5 P<> 0
                    System::Call 'kernel32::CloseHandle(p r5)'
                    System::Call 'user32::PostMessageW(p r0, i ${WM_CLOSE}, p 0, p 0)'
                ${EndIf}
            ${EndIf}
        ${Loop}
    FunctionEnd

    ; Switchboards close as if their user had closed them, which keeps their place; what is there after some seconds is
    ; ended. Nothing is lost with a process that ends so.
    Function ${un}EndProcesses
        Call ${un}CloseWindows
        StrCpy $Terminating 0
        ${For} $7 1 15
            Call ${un}VisitProcesses
            ${IfThen} $Processes = 0 ${|} Return ${|}
            Sleep 200
        ${Next}
        StrCpy $Terminating 1
        Call ${un}VisitProcesses
    FunctionEnd
!macroend

!insertmacro DefineProcesses ""
!insertmacro DefineProcesses "un."
