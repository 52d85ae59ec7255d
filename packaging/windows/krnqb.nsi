; The installer of one width. make_packages.sh defines:
;
;   VERSION, WIDTH (x64 or x86), BITS (64 or 32), OUTPUT (the installer), SIZE (of what is installed, in KB)
;   HELPER   krnqb_setup.exe of this width
;   FILES    a file with the macros InstallFiles and RemoveFiles
;
; What ends otherwise than the user wants ends with 2: a text in a window or, if silent, on standard error.
Unicode true
SetCompressor /SOLID lzma
!if ${WIDTH} == x64
  Target amd64-unicode
  !define MULTIUSER_USE_PROGRAMFILES64
  !define NAME "krnqb"
!else
  Target x86-unicode
  !define NAME "krnqb (32-bit)"
!endif

!define LIST "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define ENTRY "${LIST}\krnqb-${WIDTH}"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_FUNCTION ChooseFolder
!define MULTIUSER_MUI
!include LogicLib.nsh
!include WinVer.nsh
!include MUI2.nsh
!include MultiUser.nsh
!include "${FILES}"

Name "krnqb ${VERSION} (${BITS}-bit)"
OutFile "${OUTPUT}"
BrandingText "krnqb ${VERSION}"
ManifestDPIAware true
ManifestSupportedOS all
ShowInstDetails nevershow
ShowUninstDetails nevershow
VIProductVersion "${VERSION}.0"
VIAddVersionKey CompanyName "Korrin Software"
VIAddVersionKey FileDescription "Installs krnqb and KRN6_QB2002.dll (${BITS}-bit)"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright ""
VIAddVersionKey ProductName "krnqb"
VIAddVersionKey ProductVersion "${VERSION}"

!define MUI_ABORTWARNING
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "Open a new command window and type: krnqb help"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var givenFolder     ; after /D=
Var users           ; all-users or current-user, as krnqb_setup.exe calls them
Var earlierFolder   ; of the version that is installed
Var highestFolder   ; the highest folder that the installer has created
Var isOnPath        ; 1 if the installer has put its folder on the search path

; Both programs, the installer and the uninstaller, have functions of their own.
!macro Functions un

; Refuse: ends with the text on the stack.
Function ${un}Refuse
  Exch $0
  ${If} ${Silent}
    System::Call 'kernel32::GetStdHandle(i -12) p.r1'
    ${If} $1 P= 0
      System::Call 'kernel32::AttachConsole(i -1)'
      System::Call 'kernel32::GetStdHandle(i -12) p.r1'
    ${EndIf}
    StrCpy $0 "$0$\r$\n"
    System::Call 'kernel32::lstrlenA(m r0) i.r2'
    System::Call 'kernel32::WriteFile(p r1, m r0, i r2, *i, p 0)'
  ${Else}
    MessageBox MB_OK|MB_ICONSTOP "$0"
  ${EndIf}
  SetErrorLevel 2
  Quit
FunctionEnd

; RefuseOthers: refuses /AllUsers unless the user is an administrator. MultiUser.nsh would show a window even if silent.
Function ${un}RefuseOthers
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == Admin
  ${OrIf} $0 == Power
    Return
  ${EndIf}
  ${${un}GetParameters} $0
  ClearErrors
  ${${un}GetOptions} $0 "/AllUsers" $1
  ${IfNot} ${Errors}
    Push "Only an administrator can do this for all users. Run this program as administrator."
    Call ${un}Refuse
  ${EndIf}
FunctionEnd

; RefuseUsed: refuses if the program on the stack, a file in $INSTDIR, is running or loaded.
Function ${un}RefuseUsed
  Exch $0
  ${If} ${FileExists} "$INSTDIR\$0"
    ${Do}
      ClearErrors
      FileOpen $1 "$INSTDIR\$0" a
      ${IfNot} ${Errors}
        FileClose $1
        ${ExitDo}
      ${EndIf}
      StrCpy $2 "$INSTDIR\$0 is in use or write-protected. Close the programs that use it"
      ${If} ${Silent}
        Push "$2 and try again."
        Call ${un}Refuse
      ${EndIf}
      ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$2." IDCANCEL`
        SetErrorLevel 2
        Quit
      ${EndIf}
    ${Loop}
  ${EndIf}
  Pop $0
FunctionEnd

; Helper: runs krnqb_setup.exe with the command on the stack. Leaves its exit code on the stack, or refuses with what it
; says.
Function ${un}Helper
  Exch $0
  InitPluginsDir
  ${IfNot} ${FileExists} "$PLUGINSDIR\krnqb_setup.exe"
    File "/oname=$PLUGINSDIR\krnqb_setup.exe" "${HELPER}"
  ${EndIf}
  nsExec::ExecToStack '"$PLUGINSDIR\krnqb_setup.exe" $0 $users "$INSTDIR"'
  Pop $1
  Pop $2
  ${If} $1 != 0
  ${AndIf} $1 != 3
    Push "krnqb could not change the registry ($0): $2"
    Call ${un}Refuse
  ${EndIf}
  StrCpy $0 $1
  Exch $0
FunctionEnd

; RemoveFolders: removes $INSTDIR, if it is empty, and the folders above it up to $highestFolder.
Function ${un}RemoveFolders
  StrCpy $0 $INSTDIR
  ${Do}
    RMDir $0
    ${If} $highestFolder == ""
    ${OrIf} $0 == $highestFolder
    ${OrIf} ${FileExists} "$0\*.*"
      ${ExitDo}
    ${EndIf}
    ${${un}GetParent} $0 $0
  ${LoopUntil} $0 == ""
FunctionEnd

Function ${un}NameUsers
  ${If} $MultiUser.InstallMode == AllUsers
    StrCpy $users all-users
  ${Else}
    StrCpy $users current-user
  ${EndIf}
FunctionEnd

!macroend
!insertmacro Functions ""
!insertmacro Functions un.

; The folder after /D= comes first, then that of the version that is installed.
Function ChooseFolder
  ReadRegStr $earlierFolder SHCTX "${ENTRY}" InstallLocation
  ${If} $givenFolder != ""
    StrCpy $INSTDIR $givenFolder
  ${ElseIf} $earlierFolder != ""
    StrCpy $INSTDIR $earlierFolder
  ${EndIf}
FunctionEnd

Function .onInit
  StrCpy $givenFolder $INSTDIR
  ${IfNot} ${AtLeastWin7}
    Push "krnqb needs Windows 7 or later; nothing was installed."
    Call Refuse
  ${EndIf}
  Call RefuseOthers
  !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
  Call un.RefuseOthers
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

; RememberNewFolders: sets $highestFolder to the highest folder above and including $INSTDIR that is missing.
Function RememberNewFolders
  StrCpy $highestFolder ""
  StrCpy $0 $INSTDIR
  ${Do}
    ${If} $0 == ""
    ${OrIf} ${FileExists} "$0\*.*"
      ${ExitDo}
    ${EndIf}
    StrCpy $highestFolder $0
    ${GetParent} $0 $0
  ${Loop}
FunctionEnd

; RemoveEarlier: removes the version that is installed for the same users, whichever it is.
Function RemoveEarlier
  ReadRegStr $earlierFolder SHCTX "${ENTRY}" InstallLocation
  ReadRegStr $highestFolder SHCTX "${ENTRY}" HighestFolder
  ${If} $earlierFolder == ""
  ${OrIfNot} ${FileExists} "$earlierFolder\uninstall.exe"
    Call RememberNewFolders
    Return
  ${EndIf}
  ; It stays in its place while it runs, so that this program can wait for its end.
  ExecWait '"$earlierFolder\uninstall.exe" /S /$MultiUser.InstallMode _?=$earlierFolder' $0
  ${If} $0 != 0
    Push "The version in $earlierFolder could not be removed. Close the programs that use it, or remove it first."
    Call Refuse
  ${EndIf}
  Delete "$earlierFolder\uninstall.exe"
  ${If} $earlierFolder != $INSTDIR
    Push $INSTDIR
    StrCpy $INSTDIR $earlierFolder
    Call RemoveFolders
    Pop $INSTDIR
    Call RememberNewFolders
  ${EndIf}
FunctionEnd

Section
  Call NameUsers
  Push krnqb.exe
  Call RefuseUsed
  Push KRN6_QB2002.dll
  Call RefuseUsed
  Call RemoveEarlier

  ClearErrors
  !insertmacro InstallFiles
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    Push "krnqb could not be written to $INSTDIR. Choose another folder, or run the installer as administrator."
    Call Refuse
  ${EndIf}

  WriteRegStr SHCTX "${ENTRY}" DisplayName "$(^Name)"
  WriteRegStr SHCTX "${ENTRY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" Publisher "Korrin Software"
  WriteRegStr SHCTX "${ENTRY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${ENTRY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegStr SHCTX "${ENTRY}" HighestFolder "$highestFolder"
  WriteRegDWORD SHCTX "${ENTRY}" EstimatedSize ${SIZE}
  WriteRegDWORD SHCTX "${ENTRY}" NoModify 1
  WriteRegDWORD SHCTX "${ENTRY}" NoRepair 1
  ${If} ${Errors}
    Push "krnqb could not be added to the list of programs."
    Call Refuse
  ${EndIf}

  Push register
  Call Helper
  Pop $0
  Push add-to-path
  Call Helper
  Pop $0
  ${If} $0 = 0
    WriteRegDWORD SHCTX "${ENTRY}" IsOnPath 1
  ${EndIf}
SectionEnd

Section Uninstall
  Call un.NameUsers
  Push krnqb.exe
  Call un.RefuseUsed
  Push KRN6_QB2002.dll
  Call un.RefuseUsed

  Push unregister
  Call un.Helper
  Pop $0
  ReadRegDWORD $isOnPath SHCTX "${ENTRY}" IsOnPath
  ${If} $isOnPath = 1
    Push remove-from-path
    Call un.Helper
    Pop $0
  ${EndIf}
  ReadRegStr $highestFolder SHCTX "${ENTRY}" HighestFolder
  !insertmacro RemoveFiles
  Delete "$INSTDIR\uninstall.exe"
  DeleteRegKey SHCTX "${ENTRY}"
  ; A user may have had no list.
  ${If} $users == current-user
    DeleteRegKey /ifempty SHCTX "${LIST}"
  ${EndIf}
  SetOutPath $TEMP
  Call un.RemoveFolders
SectionEnd
