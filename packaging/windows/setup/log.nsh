; ${Say} "text": a line on the screen and, with its time, in the log file. Takes the registers $R0 to $R6.

Var LogFile

!macro DefineLog un
    ; The file that /LOG=FILE names, or one where only administrators write, whichever of them this is.
    Function ${un}OpenLog
        ${GetParameters} $R0
        ${GetOptions} $R0 "/LOG=" $R1
        ${If} $R1 == ""
            CreateDirectory "$WINDIR\Logs"
            StrCpy $R1 "$WINDIR\Logs\RVLClientSetup.log"
        ${EndIf}
        FileOpen $LogFile $R1 a ; empty when it cannot be opened
        ${If} $LogFile != ""
            FileSeek $LogFile 0 END
        ${EndIf}
        ClearErrors
    FunctionEnd

    Function ${un}WriteLogLine
        DetailPrint $R0
        ${If} $LogFile != ""
            StrCpy $R6 $R0
            ${GetTime} "" "L" $R0 $R1 $R2 $R5 $R3 $R4 $R5
            FileWrite $LogFile "$R2-$R1-$R0 $R3:$R4:$R5 $R6$\r$\n"
        ${EndIf}
        ClearErrors
    FunctionEnd
!macroend

!insertmacro DefineLog ""
!insertmacro DefineLog "un."

!macro Say text
    StrCpy $R0 `${text}`
    !ifdef __UNINSTALL__
        Call un.WriteLogLine
    !else
        Call WriteLogLine
    !endif
!macroend
!define Say `!insertmacro Say`
