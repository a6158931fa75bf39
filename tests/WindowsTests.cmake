# The tests of a Windows build made on Debian: GoogleTest from Debian's source, run by Wine.
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

find_program(LOADER_WINE NAMES wine REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${LOADER_WINE})
# Wine shows this machine's files as drive Z:.
set(LOADER_TEST_ROOT "Z:")

# Beside the test programs and the programs: the compiler's libraries.
foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library} OUTPUT_VARIABLE file
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  get_filename_component(file ${file} REALPATH)
  file(COPY ${file} DESTINATION ${CMAKE_BINARY_DIR}/tests)
  file(COPY ${file} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endforeach()

# And Qt's: its libraries, and the plugins that a window needs.
if(LOADER_QT)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
  foreach(folder ${CMAKE_BINARY_DIR}/tests ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    foreach(library Core Gui Widgets Network Test)
      get_target_property(file Qt6::${library} LOCATION)
      file(COPY ${file} DESTINATION ${folder})
    endforeach()
    file(COPY $ENV{LOADER_QT_WINDOWS}/plugins/platforms $ENV{LOADER_QT_WINDOWS}/plugins/styles DESTINATION ${folder})
    # Its own words in Japanese, laid out as the packages have them.
    file(COPY /usr/share/qt6/translations/qtbase_ja.qm DESTINATION ${folder}/translations)
    file(COPY ${PROJECT_BINARY_DIR}/qt.conf DESTINATION ${folder})
  endforeach()
endif()

# Test folders that are not built: what they hold needs a device or a display that is Linux' own.
set(LOADER_TESTS_NOT_HERE display links)
if(NOT LOADER_QT)
  list(APPEND LOADER_TESTS_NOT_HERE devices paramtool qt e2e)
endif()

# Tests that do not run. Each is about something that the system does not have or that the library does not offer there.
set(LOADER_NOT_ON_WINDOWS
  # A pipe among the files.
  InitialSettings.ThatAreAPipeFailAtOnce
  PrivateProfiles.ThatArePipesHoldNothingAndCannotBeWritten
  PrivateProfiles.AreNotWrittenThroughAPipeBesideThem
  TextOutputs.FailWhereTheTemplateIsNoFile
  TextOutputs.CannotBeWrittenWhereNoFileCanBe
  ProvedSave.TellsWhatIsNoFile
  BadFiles.ThatArePipesFail
  ParameterFlows.ThatMeetAPipeOrAFolderSayAtOnceThatTheyFailed
  ParameterFiles.AreNotSavedToAPipe
  # A device among the files; WindowsSaves looks at those of Windows.
  ParameterFiles.AreNotSavedToADevice
  ParameterFiles.FailToSaveWhenTheHeadCannotBeWritten
  # A limit for the files of a process, as a disk that is full.
  TextOutputs.OnADiskThatFillsKeepTheOlderSheet
  ProvedSave.LeavesTheOldFileWhenTheDiskIsFull
  ParameterFiles.AreShortenedWithoutAWordWhenTheDiskFills
  ReadCommand.AFormerFileStaysWholeWhenTheDiskIsFull
  WriteCommand.WithoutRoomForABackupNothingIsWritten
  # A symbolic link: to make one takes a right that a user there does not have.
  Start.TakesASettingsFileThatCannotBeLookedAtAsMissing
  PrivateProfiles.ThatAreSymbolicLinksStayLinks
  PrivateProfiles.OfAChainOfLinksKeepEachOfThem
  PrivateProfiles.BehindALinkThatLeadsNowhereYetAreCreatedThere
  PrivateProfiles.OfLinksInACircleCannotBeWritten
  TextOutputs.GoWhereALinkLeads
  TextOutputs.DoNotReplaceTheirTemplate
  BadFiles.ThatAreLinksToGoodOnesLoad
  ParameterFiles.AreSavedThroughALink
  ProvedSave.GoesThroughALinkAndKeepsThePermissions
  FleetList.ALinkToADeviceIsTheDevice
  # Permissions other than the read-only attribute, which WindowsFiles looks at.
  PrivateProfiles.ThatWereMadeReadOnlyStayAsTheyAre
  PrivateProfiles.KeepTheirPermissions
  # A pseudo-terminal: a serial line, or a screen.
  DecodeCommand.KnowsTheLayoutOfAnOlderFirmware
  ReadCommand.ATerminalShowsHowFarItIs
  # A shell, a device or a tool of the system.
  Program.LoadsNoWidgets
  DecodeCommand.RefusesWhatHasNoEnd
  WriteCommand.WithClosedStreamsNothingStrayGoesAnywhere
  # Symbolic links once more.
  ConvertCommand.AFileIsConvertedInPlaceByItsOwnNameOnly
  FleetCommand.OneFileUnderTwoNamesIsADefect)
list(JOIN LOADER_NOT_ON_WINDOWS ":" LOADER_NOT_ON_WINDOWS)

# One test of ctest for a whole program: a start of Wine for each of its tests would cost more than the tests.
function(loader_windows_ctest name)
  cmake_parse_arguments(ARG "" "" LABELS ${ARGN})
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 "--gtest_filter=-${LOADER_NOT_ON_WINDOWS}")
  set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 900 ENVIRONMENT "WINEDEBUG=-all")
endfunction()
