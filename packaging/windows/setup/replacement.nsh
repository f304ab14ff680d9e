; The files of the program in $INSTDIR: the new ones are whole beside it before anything stops, the old ones stay until
; the new service runs. At every moment a whole program stands at its place, also after a power cut. Takes the registers
; $0 to $9 and $R7 to $R9.

!define NEW "$INSTDIR\setup-new"
!define PREVIOUS "$INSTDIR\setup-previous"
!define MOVEFILE_REPLACE_EXISTING_WRITE_THROUGH 9

; The program comes last: it is what counts as installed.
!macro ForEachFile action
    !insertmacro ${action} README.txt
    !insertmacro ${action} LICENSE.txt
    !insertmacro ${action} RVLClientTemplate.mdb
    !insertmacro ${action} RavelinTools.dll
    !insertmacro ${action} ${PROGRAM}
!macroend

!macro UnpackFile name
    File "${SOURCE}/${name}"
!macroend

!macro KeepFile name
    System::Call 'kernel32::CopyFileW(w "$INSTDIR\${name}", w "${PREVIOUS}\${name}", i 0) i .r1'
    ${If} $1 = 0
    ${AndIf} ${FileExists} "$INSTDIR\${name}"
        StrCpy $9 0
    ${EndIf}
!macroend

!macro MoveFile name
    Push "${name}"
    Call MoveFile
!macroend

!macro RemoveFile name
    Delete "$INSTDIR\${name}"
!macroend

; Each of these leaves 1 in $9, or 0 when it failed.

Function KeepFiles
    StrCpy $9 1
    RMDir /r "${PREVIOUS}"
    CreateDirectory "${PREVIOUS}"
    !insertmacro ForEachFile KeepFile
FunctionEnd

; From the folder $8; what is not there does not move.
Function MoveFiles
    StrCpy $9 1
    !insertmacro ForEachFile MoveFile
FunctionEnd

; Somebody may start the program while it is replaced, or look through its files: that takes a few tries.
Function MoveFile
    Pop $R9 ; the name
    ${IfNotThen} ${FileExists} "$8\$R9" ${|} Return ${|}
    StrCpy $Terminating 1
    ${For} $R7 1 20
        System::Call 'kernel32::MoveFileExW(w "$8\$R9", w "$INSTDIR\$R9", \
                      i ${MOVEFILE_REPLACE_EXISTING_WRITE_THROUGH}) i .r0 ?e'
        Pop $R8
        ${IfThen} $0 <> 0 ${|} Return ${|}
        Call VisitProcesses
        Sleep 250
    ${Next}
    ${Say} "Cannot replace $R9: error $R8"
    StrCpy $9 0
FunctionEnd

Function RemoveWorkFolders
    RMDir /r "${NEW}"
    RMDir /r "${PREVIOUS}"
FunctionEnd
