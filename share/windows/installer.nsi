; The installer: for one user or for all, in Japanese or English as Windows is.
;   makensis -DVERSION=NUMBER -DSTAGE=FOLDER -DREMOVE=LIST -DOUTPUT=FILE.exe installer.nsi
; STAGE is the portable folder; REMOVE holds a Delete or RMDir line for everything in it (scripts/windows.sh).
; Silent: /S with /AllUsers or /CurrentUser, and /D=FOLDER as the last word; it ends with 2 and nothing changed when a file
; of the installation is in use.
Unicode true
; Of the same kind as the programs: a machine that runs them runs this.
Target amd64-unicode
SetCompressor /SOLID lzma
Name "$(PROGRAM)"
OutFile "${OUTPUT}"
ManifestDPIAware true
; A file left out would be half an installation.
AllowSkipFiles off
BrandingText " "

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\ParameterLoader"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "Parameter Loader"
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
; An installation is found again by these, by a newer installer and by the uninstaller.
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "UninstallString"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Parameter Loader"
VIAddVersionKey /LANG=0 "FileDescription" "Parameter Loader Setup"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "CompanyName" "Parameter Loader"
VIAddVersionKey /LANG=0 "LegalCopyright" ""

!define MUI_ICON "${STAGE}\parameter-loader.ico"
!define MUI_UNICON "${STAGE}\parameter-loader.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${__FILEDIR__}/installer.bmp"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION RunAsUser
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(UNINSTALL_TEXT)"
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Japanese"
!insertmacro MUI_LANGUAGE "English"

LangString PROGRAM ${LANG_JAPANESE} "パラメータローダ"
LangString PROGRAM ${LANG_ENGLISH} "Parameter Loader"
LangString GUIDE ${LANG_JAPANESE} "取扱説明書"
LangString GUIDE ${LANG_ENGLISH} "User guide"
LangString KOV_FILE ${LANG_JAPANESE} "KOV 記録計の設定"
LangString KOV_FILE ${LANG_ENGLISH} "Set-up of a KOV recorder"
LangString RUG_FILE ${LANG_JAPANESE} "RUG 記録計の設定"
LangString RUG_FILE ${LANG_ENGLISH} "Set-up of a RUG recorder"
LangString GUIDE_FILE ${LANG_JAPANESE} "user-guide.ja.html"
LangString GUIDE_FILE ${LANG_ENGLISH} "user-guide.html"

LangString IN_USE ${LANG_JAPANESE} "次のファイルが使用中か、書き込みが許可されていません。$\n$\n$R9$\n$\nパラメータローダ、paramtool、recorder-sim を終了してから［再試行］を押してください。$\n［キャンセル］を押すと、何も変更せずに終了します。"
LangString IN_USE ${LANG_ENGLISH} "This file is in use or may not be written:$\n$\n$R9$\n$\nClose Parameter Loader, paramtool and recorder-sim, then press Retry.$\nCancel ends here; nothing has been changed."
LangString UNINSTALL_TEXT ${LANG_JAPANESE} "次のフォルダからパラメータローダをアンインストールします。LOADER.INI、パラメータファイルなど、インストール後に作られたファイルは残ります。"
LangString UNINSTALL_TEXT ${LANG_ENGLISH} "Parameter Loader will be uninstalled from the following folder. LOADER.INI, parameter files and all other files made since stay there."

Function .onInit
  !insertmacro MULTIUSER_INIT
FunctionEnd

; The installation that it lies in is the one that it removes, however it was started.
Function un.onInit
  StrCpy $R7 $INSTDIR
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $R8 HKLM "${UNINSTALL}" "InstallLocation"
  ${If} $R8 == $R7
    Call un.MultiUser.InstallMode.AllUsers
  ${Else}
    Call un.MultiUser.InstallMode.CurrentUser
  ${EndIf}
  StrCpy $INSTDIR $R7
FunctionEnd

; By the desktop, which has the user's own rights: this installer may have those of an administrator, with which the window
; would write into the installation and take no file that is dragged onto it.
Function RunAsUser
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\parameter-loader.exe"'
FunctionEnd

; Goes on only when no program of the folder $R8 runs: their files could not be replaced or removed. One that cannot be
; written for another reason stops here as well.
!macro NothingInUse UN
Function ${UN}LookInto ; $R7: the pattern of names; leaves the file in use in $R9
  ${GetParent} "$R7" $R4
  FindFirst $R5 $R6 "$R7"
  ${DoWhile} $R6 != ""
    ${If} "$R9" == ""
    ${AndIf} "${UN}$R6" != "un.uninstall.exe" ; the very program
      ClearErrors
      FileOpen $R3 "$R4\$R6" a
      ${If} ${Errors}
        StrCpy $R9 "$R4\$R6"
      ${Else}
        FileClose $R3
      ${EndIf}
    ${EndIf}
    FindNext $R5 $R6
  ${Loop}
  FindClose $R5
FunctionEnd
Function ${UN}NothingInUse
  ${Do}
    StrCpy $R9 ""
    StrCpy $R7 "$R8\*.exe"
    Call ${UN}LookInto
    StrCpy $R7 "$R8\*.dll"
    Call ${UN}LookInto
    StrCpy $R7 "$R8\platforms\*.dll"
    Call ${UN}LookInto
    StrCpy $R7 "$R8\styles\*.dll"
    Call ${UN}LookInto
    ${IfThen} "$R9" == "" ${|} ${ExitDo} ${|}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(IN_USE)" /SD IDCANCEL IDRETRY +3
      SetErrorLevel 2
      Quit
  ${Loop}
FunctionEnd
!macroend
!insertmacro NothingInUse ""
!insertmacro NothingInUse "un."

; Whether the files $R1 and $R2 are the same: $R0 is 1 or 0.
Function Compare
  FileOpen $R3 "$R1" r
  FileOpen $R4 "$R2" r
  StrCpy $R0 1
  ${Do}
    ClearErrors
    FileReadByte $R3 $R5
    ${IfThen} ${Errors} ${|} StrCpy $R5 "end" ${|}
    ClearErrors
    FileReadByte $R4 $R6
    ${IfThen} ${Errors} ${|} StrCpy $R6 "end" ${|}
    ${If} $R5 != $R6
      StrCpy $R0 0
      ${ExitDo}
    ${EndIf}
  ${LoopUntil} $R5 == "end"
  FileClose $R3
  FileClose $R4
FunctionEnd

; What a user may have adapted stays beside the new one, under a name that is free.
!macro KeepOld FILE
  File "/oname=$PLUGINSDIR\${FILE}" "${STAGE}\${FILE}"
  ${If} ${FileExists} "$R8\${FILE}"
    StrCpy $R1 "$R8\${FILE}"
    StrCpy $R2 "$PLUGINSDIR\${FILE}"
    Call Compare
    ${If} $R0 == 0
      StrCpy $R1 ""
      ${DoWhile} ${FileExists} "$R8\${FILE}.old$R1"
        IntOp $R1 $R1 + 1
      ${Loop}
      CopyFiles /SILENT "$R8\${FILE}" "$R8\${FILE}.old$R1"
    ${EndIf}
  ${EndIf}
!macroend

; Name and icon of a kind of file. The window takes no file on its command line, so nothing opens it; a kind that another
; program has already taken stays that program's.
!macro FileKind EXTENSION NAME
  ReadRegStr $0 HKCR ".${EXTENSION}" ""
  StrCmp $0 "" +2
    StrCmp $0 "ParameterLoader.${EXTENSION}" 0 +4
  WriteRegStr SHCTX "Software\Classes\.${EXTENSION}" "" "ParameterLoader.${EXTENSION}"
  WriteRegStr SHCTX "Software\Classes\ParameterLoader.${EXTENSION}" "" "${NAME}"
  WriteRegStr SHCTX "Software\Classes\ParameterLoader.${EXTENSION}\DefaultIcon" "" "$INSTDIR\parameter-file.ico"
!macroend

!macro NoFileKind EXTENSION
  ReadRegStr $0 SHCTX "Software\Classes\.${EXTENSION}" ""
  StrCmp $0 "ParameterLoader.${EXTENSION}" 0 +2
    DeleteRegKey SHCTX "Software\Classes\.${EXTENSION}"
  DeleteRegKey SHCTX "Software\Classes\ParameterLoader.${EXTENSION}"
!macroend

; The shell looks at the kinds of files again.
!macro TellShell
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section
  InitPluginsDir
  ; The installation of before: the same one, one in another folder, or what lies in this folder.
  ReadRegStr $R8 SHCTX "${UNINSTALL}" "InstallLocation"
  ${IfNot} ${FileExists} "$R8\uninstall.exe"
    StrCpy $R8 $INSTDIR
  ${EndIf}
  Call NothingInUse
  !insertmacro KeepOld "InitSet.Ini"
  !insertmacro KeepOld "TextKOV.Ini"
  !insertmacro KeepOld "TextRUG.Ini"
  ; What it had installed goes, so that nothing of it stays that this one does not have and would not remove.
  ${If} ${FileExists} "$R8\uninstall.exe"
    ExecWait '"$R8\uninstall.exe" /S /$MultiUser.InstallMode _?=$R8'
    Delete "$R8\uninstall.exe"
    RMDir "$R8"
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${STAGE}\*.*"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\$(PROGRAM)"
  CreateShortCut "$SMPROGRAMS\$(PROGRAM)\$(PROGRAM).lnk" "$INSTDIR\parameter-loader.exe"
  CreateShortCut "$SMPROGRAMS\$(PROGRAM)\$(GUIDE).lnk" "$INSTDIR\docs\$(GUIDE_FILE)"

  !insertmacro FileKind "KOV" "$(KOV_FILE)"
  !insertmacro FileKind "RUG" "$(RUG_FILE)"
  !insertmacro TellShell

  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "$(PROGRAM)"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "$INSTDIR\parameter-loader.exe"
  WriteRegStr SHCTX "${UNINSTALL}" "Publisher" "Parameter Loader"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL}" "EstimatedSize" "$0"
SectionEnd

; Only what was installed goes: LOADER.INI, parameter files and whatever else a user has put there stay.
Section un.Install
  StrCpy $R8 $INSTDIR
  Call un.NothingInUse
  !include "${REMOVE}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\$(PROGRAM)\$(PROGRAM).lnk"
  Delete "$SMPROGRAMS\$(PROGRAM)\$(GUIDE).lnk"
  RMDir "$SMPROGRAMS\$(PROGRAM)"
  !insertmacro NoFileKind "KOV"
  !insertmacro NoFileKind "RUG"
  !insertmacro TellShell
  DeleteRegKey SHCTX "${UNINSTALL}"
SectionEnd
