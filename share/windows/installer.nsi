; The installer: for one user or for all, in Japanese or English as Windows is.
;   makensis -DVERSION=NUMBER -DSTAGE=FOLDER -DREMOVE=LIST -DOUTPUT=FILE.exe installer.nsi
; STAGE is the portable folder; REMOVE holds a Delete or RMDir line for everything in it (scripts/windows.sh).
; Silent: /S with /AllUsers or /CurrentUser, and /D=FOLDER as the last word.
Unicode true
; Of the same kind as the programs: a machine that runs them runs this.
Target amd64-unicode
SetCompressor /SOLID lzma
Name "Parameter Loader"
OutFile "${OUTPUT}"
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
!include FileFunc.nsh

!define MUI_ICON "${STAGE}\parameter-loader.ico"
!define MUI_UNICON "${STAGE}\parameter-loader.ico"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\parameter-loader.exe"
!insertmacro MUI_PAGE_FINISH
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
LangString GUIDE_FILE ${LANG_JAPANESE} "user-guide.ja.md"
LangString GUIDE_FILE ${LANG_ENGLISH} "user-guide.md"

Function .onInit
  !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

; What a user may have adapted stays beside the new one.
!macro KeepOld FILE
  IfFileExists "$INSTDIR\${FILE}" 0 +2
    CopyFiles /SILENT "$INSTDIR\${FILE}" "$INSTDIR\${FILE}.old"
!macroend

; Name and icon of a kind of file. The window takes no file on its command line, so nothing opens it; a kind that another
; program has already taken stays that program's.
!macro FileKind EXTENSION NAME
  ReadRegStr $0 SHCTX "Software\Classes\.${EXTENSION}" ""
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
  SetOutPath "$INSTDIR"
  !insertmacro KeepOld "InitSet.Ini"
  !insertmacro KeepOld "TextKOV.Ini"
  !insertmacro KeepOld "TextRUG.Ini"
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
