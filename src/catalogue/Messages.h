// Every text that the program shows, by its number in the message catalogue, with the English text that
// serves where the catalogue has none. Three digits, at most 125 characters without the closing blank;
// longer texts take several numbers, joined. "&" marks a caption's mnemonic.
#pragma once

#include <string_view>

namespace kelvora {

struct MessageId {
    int id;
    std::string_view fallback;
};

/// Whether a number is one of the program's additions; all others are the system's own.
constexpr bool IsOwnMessage(int id)
{
    return id >= 600 || (id >= 430 && id < 520) || (id >= 120 && id < 200);
}

namespace Message {

// Message boxes and dialog titles.
inline constexpr MessageId UploadTitle{112, "Flash Upload"};
inline constexpr MessageId VerifyTitle{113, "Flash Verify"};
inline constexpr MessageId OpenSetupTitle{114, "Open Setup"};
inline constexpr MessageId SaveSetupTitle{115, "Save Setup As"};
inline constexpr MessageId SaveDumpTitle{116, "Save Flash Dump As"};
inline constexpr MessageId RejectedFile{201, "The setup file could not be read. Go on with an empty setup?"};
inline constexpr MessageId SaveChanges{202, "The setup has been changed. Save the changes?"};
inline constexpr MessageId CloseUnsaved{203, "The setup could not be saved. Close it without saving?"};
inline constexpr MessageId DeleteMaster{204, "Delete the main keyboard and all other modules of the line?"};
inline constexpr MessageId ModeNotSet{232, "The terminal did not accept the connection mode."};
inline constexpr MessageId VerifyNotRead{
    233,
    "The device's flash memory could not be read, so nothing was compared. Check the line, then try again."};
inline constexpr MessageId VerifyDifferent{
    234, "The device does not hold this setup. The first difference is at address "};
inline constexpr MessageId VerifySame{235, "The device's flash memory holds this setup."};
inline constexpr MessageId ConfirmDefaults{250, "Set every key of this keyboard back to its default type?"};
inline constexpr MessageId ReloadKeyMap{251, "The key map is empty. Read it again from the setup?"};
inline constexpr MessageId RejectedSection{260, "A module cannot stand here."};
inline constexpr MessageId RejectedLine{263, "A line of the file is not valid."};
inline constexpr MessageId Interruption{270, "Esc stops an operation on the line. None runs now."};

// Errors of the line, under the offsets of their numbers.
inline constexpr MessageId LineFailed{220, "The terminal or its line reported an error. Try again."};
inline constexpr MessageId LineNoDevices{221, "The terminal found no devices on its line."};
inline constexpr MessageId LineMalformed{223,
                                         "The terminal's answer makes no sense. Check the port settings."};
inline constexpr MessageId LineGaveUp{
    224, "The terminal does not answer. Check that it is on, its cable, the port and the speed."};
inline constexpr MessageId LineGivenTime{
    225, "No answer came in the time given. Check the terminal, its cable, the port and the speed."};
inline constexpr MessageId LineStatus999{226, "The terminal is not ready (status 999)."};
inline constexpr MessageId LineRejected{227, "The terminal refused the command."};
inline constexpr MessageId LineStatus5{228, "The terminal could not carry the command out (status 5)."};
inline constexpr MessageId LineStatus3{229, "The terminal is busy (status 3)."};
inline constexpr MessageId LineUndefined{290, "The line failed for an unknown reason."};

// The user interruption dialog.
inline constexpr MessageId AbortTitle{560, "User interruption"};
inline constexpr MessageId AbortCommand{561, "&Terminate"};
inline constexpr MessageId ContinueCommand{562, "&Contiinue"};

inline constexpr MessageId NoPort{
    104,
    "No serial port could be opened. Check that one is there, is free, and that your account may use it."};
inline constexpr MessageId NoPortTitle{119, "No Serial Port"};

// The series of tills and the journal.
inline constexpr MessageId JournalNotKept{
    120, "The journal could not be written. The work itself is not touched by this."};
inline constexpr MessageId TransferOtherTerminal{
    121, "Another terminal has taken the place of the one that this was for. Nothing was written."};
inline constexpr MessageId SeriesMenu{122, "Ser&ies..."};
inline constexpr MessageId JournalMenu{123, "&Journal..."};
inline constexpr MessageId SeriesTitle{124, "Series of Tills"};
inline constexpr MessageId SeriesOneSetup{125, "&One setup for all tills:"};
inline constexpr MessageId SeriesByName{126, "The setup of each terminal's &name, from the folder:"};
inline constexpr MessageId SeriesBrowse{127, "Browse..."};
inline constexpr MessageId SeriesLines{128, "Lines:"};
inline constexpr MessageId SeriesStart{129, "S&tart"};
inline constexpr MessageId SeriesStopAfter{130, "Stop &after These"};
inline constexpr MessageId SeriesStopNow{131, "Stop No&w"};
inline constexpr MessageId SeriesRetry{132, "Retry"};
inline constexpr MessageId SeriesSaveReport{133, "Save R&eport..."};
inline constexpr MessageId SeriesPrint{134, "&Print..."};
inline constexpr MessageId SeriesDone{135, "Done"};
inline constexpr MessageId SeriesSame{136, "Held it already"};
inline constexpr MessageId SeriesFailed{137, "Failed"};
inline constexpr MessageId SeriesStopped{138, "Stopped"};
inline constexpr MessageId LaneWaiting{139, "Waiting for a till"};
inline constexpr MessageId LaneNoPort{140, "Waiting for the port"};
inline constexpr MessageId LaneWorking{141, "Working"};
inline constexpr MessageId LaneEnded{142, "Ended"};
inline constexpr MessageId LaneTakeAway{143, "Take the till away; then the next one is looked for."};
inline constexpr MessageId LaneStopping{144, "Stops after this till"};
inline constexpr MessageId LaneLast{145, "Last:"};
inline constexpr MessageId ColumnTime{146, "Time"};
inline constexpr MessageId ColumnLine{147, "Line"};
inline constexpr MessageId ColumnTerminal{148, "Terminal"};
inline constexpr MessageId ColumnModules{149, "Modules"};
inline constexpr MessageId ColumnChanges{150, "What changed"};
inline constexpr MessageId ColumnResult{151, "Result"};
inline constexpr MessageId ColumnBackup{152, "Backup"};
inline constexpr MessageId SeriesAsk{
    153, "Every till that is connected to these lines gets the setup at once, without a further question:"};
inline constexpr MessageId SeriesAskBackup{154, "What each one held is kept as a backup. Begin?"};
inline constexpr MessageId SeriesAskClose{
    155, "The series is still running. Stop it after the tills that are worked on, and close?"};
inline constexpr MessageId SeriesNotStarted{156, "The series ended on this line:"};
inline constexpr MessageId SeriesReportTitle{157, "Save Report As"};
inline constexpr MessageId FilterCsv{158, "Tables"};
inline constexpr MessageId SeriesEmpty{159, "The tills appear here as they are done."};
inline constexpr MessageId SeriesSheetTitle{160, "Report of a series of tills"};
inline constexpr MessageId SeriesFolderTitle{161, "Folder of Setups"};
inline constexpr MessageId JournalTitle{162, "Journal"};
inline constexpr MessageId JournalSearch{163, "&Search:"};
inline constexpr MessageId JournalFailedOnly{164, "&Failures only"};
inline constexpr MessageId JournalOpen{165, "&Open Backup"};
inline constexpr MessageId JournalCompare{166, "&Compare"};
inline constexpr MessageId JournalRestore{167, "&Restore..."};
inline constexpr MessageId JournalReload{168, "Re&load"};
inline constexpr MessageId JournalEmpty{169, "No operation has been kept yet."};
inline constexpr MessageId JournalDamaged{170, "Damaged lines of the journal, left out:"};
inline constexpr MessageId JournalUnreadable{171, "The journal could not be read:"};
inline constexpr MessageId ColumnOperation{172, "Operation"};
inline constexpr MessageId ColumnMessage{173, "What happened"};
inline constexpr MessageId ColumnFile{174, "File"};
inline constexpr MessageId ColumnWho{175, "Who"};
inline constexpr MessageId ColumnSeconds{176, "Seconds"};
inline constexpr MessageId OperationScan{177, "scan"};
inline constexpr MessageId OperationDownload{178, "download"};
inline constexpr MessageId OperationVerify{179, "verify"};
inline constexpr MessageId OperationDump{180, "dump"};
inline constexpr MessageId OperationRestore{181, "restore"};
inline constexpr MessageId OperationReadIdentities{182, "identities read"};
inline constexpr MessageId OperationWriteIdentities{183, "identities written"};
inline constexpr MessageId OperationRestoreIdentities{184, "identities restored"};
inline constexpr MessageId ResultDifferent{185, "differs"};
inline constexpr MessageId ResultDeclined{186, "declined"};
inline constexpr MessageId JournalCount{187, "Entries:"};
inline constexpr MessageId SeriesNoBackup{188, "This entry has no backup that can be opened."};
inline constexpr MessageId UndoBackup{189, "opening a backup"};

// Menus.
inline constexpr MessageId FileMenu{300, "&File"};
inline constexpr MessageId FileMenuNew{301, "&New"};
inline constexpr MessageId FileMenuOpen{302, "&Open"};
inline constexpr MessageId FileMenuSave{303, "&Save"};
inline constexpr MessageId FileMenuSaveAs{304, "Save &As"};
inline constexpr MessageId FileMenuClose{305, "&Close"};
inline constexpr MessageId FileMenuExit{306, "E&xit"};
inline constexpr MessageId LayoutMenu{310, "&Layout"};
inline constexpr MessageId LayoutMenuAdd{311, "&Add"};
inline constexpr MessageId LayoutMenuDel{312, "&Delete"};
inline constexpr MessageId LayoutMenuMove{313, "&Move"};
inline constexpr MessageId LayoutMenuAddKBMASTER{314, "&Master Keyboard"};
inline constexpr MessageId LayoutMenuAddKB64{315, "&Extension Keyboard"};
inline constexpr MessageId LayoutMenuAddMCR{316, "&Badge Reader"};
inline constexpr MessageId LayoutMenuAddICCR{317, "&Chip Card Unit"};
inline constexpr MessageId CommunicationsMenu{320, "&Communications"};
inline constexpr MessageId CommunicationsMenuPosConnection{321, "&Pos connection"};
inline constexpr MessageId CommunicationsMenuKeybConnection{322, "&Keyboard connection"};
inline constexpr MessageId CommunicationsMenuLines{323, "&Line"};
inline constexpr MessageId CommunicationsMenuSettings{324, "&Settings"};
inline constexpr MessageId ToolsMenu{340, "&Tools"};
inline constexpr MessageId FileMenuScan{341, "&Line scan"};
inline constexpr MessageId ToolsMenuRescanLine{342, "&Rescan Line"};
inline constexpr MessageId ToolsMenuFlashDownload{343, "Flash memory &Download"};
inline constexpr MessageId ToolsMenuFlashVerify{344, "Flash memory &Verify"};
inline constexpr MessageId ToolsMenuFlashDump{345, "Flash memory &Dump"};
inline constexpr MessageId ToolsMenuFlashDumpSetup{346, "Setup Image"};
inline constexpr MessageId ToolsMenuFlashDumpUpload{347, "Upload Image"};
inline constexpr MessageId WindowMenu{350, "&Window"};
inline constexpr MessageId HelpMenu{360, "&Help"};
inline constexpr MessageId HelpMenuGuide{361, "Help Topics"};
inline constexpr MessageId HelpMenuAbout{362, "About Kelvora"};

// Toolbar: caption and tool tip of each button.
inline constexpr MessageId ToolNew{400, "New"};
inline constexpr MessageId ToolNewTip{401, "New setup file"};
inline constexpr MessageId ToolOpen{402, "Open"};
inline constexpr MessageId ToolOpenTip{403, "Open setup file"};
inline constexpr MessageId ToolSave{404, "Save"};
inline constexpr MessageId ToolSaveTip{405, "Save setup"};
inline constexpr MessageId ToolSaveAs{406, "Save as"};
inline constexpr MessageId ToolSaveAsTip{407, "Save setup as ..."};
inline constexpr MessageId ToolMaster{408, "KB-Main"};
inline constexpr MessageId ToolMasterTip{409, "Add main keyboard"};
inline constexpr MessageId ToolKB64{410, "KB64"};
inline constexpr MessageId ToolKB64Tip{411, "Add extension keyboard"};
inline constexpr MessageId ToolMCR{412, "MCR"};
inline constexpr MessageId ToolMCRTip{413, "Add badge reader"};
inline constexpr MessageId ToolICCR{414, "ICCR"};
inline constexpr MessageId ToolICCRTip{415, "Add chip card unit"};
inline constexpr MessageId ToolScan{416, "Scan"};
inline constexpr MessageId ToolScanTip{417, "Scan line for new setup"};
inline constexpr MessageId ToolRescan{418, "Rescan"};
inline constexpr MessageId ToolRescanTip{419, "Rescan existing setup"};
inline constexpr MessageId ToolDownload{420, "Download"};
inline constexpr MessageId ToolDownloadTip{421, "Download flash image"};
inline constexpr MessageId ToolVerify{422, "Verify"};
inline constexpr MessageId ToolVerifyTip{423, "Flash memory verify"};
inline constexpr MessageId ToolDumpSetup{424, "Setup Image"};
inline constexpr MessageId ToolDumpSetupTip{425, "Save the setup's flash image to a file"};
inline constexpr MessageId ToolDumpUpload{426, "Upload Image"};
inline constexpr MessageId ToolDumpUploadTip{427, "Save the device's flash image to a file"};

// Key mapping forms.
inline constexpr MessageId Keyb64Title{520, "Extension Keyboard (KM064)"};
inline constexpr MessageId Keyb96Title{521, "Main Keyboard (KM096)"};
inline constexpr MessageId KeybICCRTitle{522, "Chip Card Unit Keypad (ICCR)"};
inline constexpr MessageId KeyWord{523, "Key "};
inline constexpr MessageId UnusedCheck{524, "Unused key (disabled)"};
inline constexpr MessageId KeyTypeSingle{525, "Single key"};
inline constexpr MessageId KeyTypeVertical{526, "Double vertical key"};
inline constexpr MessageId KeyTypeHorizontal{527, "Double horizontal key"};
inline constexpr MessageId KeyTypeQuadruple{528, "Quadruple key"};
inline constexpr MessageId DefaultMapping{529, "Set keyboard defaults"};

// Communications settings.
inline constexpr MessageId PortSetupTitle{540, "Communications Settings"};
inline constexpr MessageId DataBitsFrame{541, "Data Bits"};
inline constexpr MessageId StopBitsFrame{542, "Stop Bits"};
inline constexpr MessageId ParityFrame{543, "Parity"};
inline constexpr MessageId ParityOdd{544, "Odd"};
inline constexpr MessageId ParityEven{545, "Even"};
inline constexpr MessageId ParityNone{546, "None"};

// File filters.
inline constexpr MessageId FilterAll{570, "All files"};
inline constexpr MessageId FilterText{571, "Text files"};
inline constexpr MessageId FilterSetup{572, "Setup files"};
inline constexpr MessageId FilterDump{573, "Flash dump files"};

inline constexpr MessageId Idle{590, "Ready"};
inline constexpr MessageId Quit{597, "&Quit"};

// The program's own additions from here on.
inline constexpr MessageId EditMenu{600, "&Edit"};
inline constexpr MessageId EditMenuUndo{601, "&Undo"};
inline constexpr MessageId EditMenuRedo{602, "&Redo"};
inline constexpr MessageId UndoKeyMap{603, "key map"};
inline constexpr MessageId UndoOptions{604, "options"};
inline constexpr MessageId UndoAdd{605, "adding a module"};
inline constexpr MessageId UndoDelete{606, "deleting a module"};
inline constexpr MessageId UndoMove{607, "moving a module"};
inline constexpr MessageId FileMenuRecent{610, "Open &Recent"};
inline constexpr MessageId FileMenuRecentClear{611, "&Clear List"};
inline constexpr MessageId OverwriteBackup{
    465,
    "Saving keeps the file's old content under a name that holds the backup of another file. Replace it?"};
inline constexpr MessageId Overwrite{612, "This file exists already. Replace it?"};
inline constexpr MessageId DiscardKeyMap{613,
                                         "The key map has been changed. Close without keeping the changes?"};
inline constexpr MessageId LanguageMenu{614, "Lan&guage"};
inline constexpr MessageId WindowMenuCascade{615, "&Cascade"};
inline constexpr MessageId WindowMenuTile{616, "&Tile"};
inline constexpr MessageId WindowMenuNext{617, "Ne&xt Window"};
inline constexpr MessageId WindowMenuPrevious{618, "Pre&vious Window"};
inline constexpr MessageId WindowMenuCloseAll{619, "Close &All"};
inline constexpr MessageId EmptyStrip{
    620, "This setup has no modules yet. Add the main keyboard (KM096) to begin."};
inline constexpr MessageId EmptyMain{621,
                                     "Open a setup file, start a new one, scan a line, or drop a file here."};
inline constexpr MessageId MasterCaption{622, "Composite Keyboard"};
inline constexpr MessageId BacklightCaption{623, "Backlight"};
inline constexpr MessageId Code4Caption{624, "Display and key lock"};
inline constexpr MessageId SlaveCaption{625, "Slave Keyboard"};
inline constexpr MessageId McrCaption{626, "MCR"};
inline constexpr MessageId IccrCaption{627, "ICCR"};
inline constexpr MessageId KeypadCaption{628, "Keypad"};
inline constexpr MessageId McrName{498, "Badge Reader (MCR)"};
inline constexpr MessageId IccrName{499, "Chip Card Unit (ICCR)"};
inline constexpr MessageId ClickToEdit{629, "Click to set the key types"};
inline constexpr MessageId OptionsMenu{630, "&Options..."};
inline constexpr MessageId OptionsTitle{631, "Options"};
inline constexpr MessageId OptionTracks{632, "&Tracks read"};
inline constexpr MessageId OptionSeparator1{633, "Separator after track &1"};
inline constexpr MessageId OptionSeparator2{634, "Separator after track &2"};
inline constexpr MessageId OptionSeparator3{635, "Separator after track &3"};
inline constexpr MessageId OptionAutoread{636, "&Auto-read"};
inline constexpr MessageId OptionFiscal{637, "&Fiscal keyboard"};
inline constexpr MessageId OptionBacklight{638, "&Backlight"};
inline constexpr MessageId OptionNone{639, "none"};
inline constexpr MessageId SeparatorRefused{
    640, "A setup file cannot carry this separator: it must be one visible"};
inline constexpr MessageId SeparatorRefusedMore{
    641, "character, and neither \"_\" nor a small letter from a to z."};
inline constexpr MessageId HelpTitle{642, "Kelvora Help"};
inline constexpr MessageId HelpBack{643, "&Back"};
inline constexpr MessageId HelpForward{644, "&Forward"};
inline constexpr MessageId HelpContents{645, "&Contents"};
inline constexpr MessageId HelpSearch{994, "&Search:"};
inline constexpr MessageId HelpSearchHint{995, "Words to look for in all pages"};
inline constexpr MessageId HelpNotFound{996, "No page has all of these words."};
inline constexpr MessageId HelpResults{997, "Pages that have these words"};
inline constexpr MessageId HelpMissing{646, "The help pages of this language were not found."};
inline constexpr MessageId AboutText{
    647, "Setup and configuration of the keyboard devices of a point-of-sale terminal"};
inline constexpr MessageId AboutLegal{648, "Copyright 2026 The Kelvora developers. MIT licence."};
inline constexpr MessageId Version{649, "Version "};
inline constexpr MessageId LineWord{650, "Line "};
inline constexpr MessageId ExpectedWord{651, "Expected here: "};
inline constexpr MessageId KeyStateSingle{652, "single key"};
inline constexpr MessageId KeyStateVertical{653, "double vertical key"};
inline constexpr MessageId KeyStateHorizontal{654, "double horizontal key"};
inline constexpr MessageId KeyStateQuadruple{655, "quadruple key"};
inline constexpr MessageId KeyStateUnused{656, "unused"};
inline constexpr MessageId KeyHint{658,
                                   "Arrows choose a key, 1 to 4 set its type, U switches it off and on."};
inline constexpr MessageId KeysSelected{659, " keys"};
inline constexpr MessageId ModePanel{661, "Connection mode"};
inline constexpr MessageId PortPanel{662, "Port and settings"};
inline constexpr MessageId StatusPanel{663, "Status"};
inline constexpr MessageId OperationPanel{664, "Operation"};
inline constexpr MessageId ToolbarTitle{665, "Toolbar"};
inline constexpr MessageId PlacingHint{
    666, "Choose the place: arrow keys or mouse, Enter or a click drops, Esc cancels."};
inline constexpr MessageId LanguageNotKept{667, "The choice of language could not be written:"};
inline constexpr MessageId CommunicationsLine{668, "Com"};
inline constexpr MessageId NotFound{669, "The file is no longer there:"};
inline constexpr MessageId ViewMenu{670, "&View"};
inline constexpr MessageId ViewMenuToolbar{671, "&Toolbar"};
inline constexpr MessageId ViewMenuStatusBar{672, "&Status Bar"};
inline constexpr MessageId EepromWizard{673, "&Eeprom Wizard..."};
inline constexpr MessageId FiscalSummary{674, "Fiscal"};
inline constexpr MessageId FirstKeySummary{676, "Keys from "};
inline constexpr MessageId AddMasterNow{677, "Add &Main Keyboard"};
inline constexpr MessageId ToolDump{678, "Dump"};
inline constexpr MessageId ToolDumpTip{679, "Save flash dump to file"};
inline constexpr MessageId OpenElsewhere{
    680, "This file is open in another window. Close it there first, or choose another name."};
inline constexpr MessageId KeyMapUnfit{
    695, "This key map does not fit this keyboard. Set the keyboard defaults to edit it."};
inline constexpr MessageId KeyHintMore{
    696,
    "Shift and Ctrl choose more keys, Ctrl+Z takes a step back. Esc closes without keeping the changes."};
inline constexpr MessageId KeyUndo{697, "Undo change"};
inline constexpr MessageId KeyRedo{698, "Redo change"};

// Lines of the status bar: how to stop what runs, and why something was not done.
inline constexpr MessageId StopOperation{490, "Stop"};
inline constexpr MessageId StopOperationTip{491, "Asks whether to stop what runs (Esc)"};
inline constexpr MessageId NotClosedHint{492, "The line is at work: stop it before you close."};
inline constexpr MessageId MasterStaysHint{493, "The main keyboard always stands first; it cannot be moved."};
inline constexpr MessageId KeypadStaysHint{494,
                                           "The keypad is part of the chip card unit: delete that instead."};
inline constexpr MessageId ChooseModuleHint{495, "No module is chosen. Click one, or go to one by Tab."};

// The line: ports, the scan, the simulated line.
inline constexpr MessageId LineNeedsEightBits{
    883, "The port cannot be used with these settings. The terminal's line needs 8 data bits."};
inline constexpr MessageId PortLost{885, "The port went away in the middle of the work."};
inline constexpr MessageId UndoScan{886, "line scan"};
inline constexpr MessageId ScanStatus{887, "Scanning COM"};
inline constexpr MessageId ScanOperation{888, "Line Scan + Flash Upload"};
inline constexpr MessageId ScanRejected{889, "The devices of this line make no setup."};
inline constexpr MessageId ScanUnknown{
    890, "The line has devices of an unknown kind. A setup file cannot hold their places; positions:"};
inline constexpr MessageId ScanParts{
    891, "The main keyboard did not report all its parts. A setup file brings back the missing ones."};
inline constexpr MessageId ScanRemarks{896, "The line was scanned. Before you save the setup, mind this:"};
inline constexpr MessageId ScanNoImage{
    880, "The keys and options were not read: those of the setup are the defaults."};
inline constexpr MessageId WarnNotReleased{
    608, "The terminal did not confirm that it uses its devices again. If they stay dead, restart it."};
inline constexpr MessageId WarnFlashNotClosed{
    609, "The terminal did not close the device's flash memory. Its content is what it was."};
inline constexpr MessageId WarnTransferNotEnded{657, "The terminal did not confirm the end of the transfer."};
inline constexpr MessageId ScanStopped{660, "The scan was stopped."};
inline constexpr MessageId ScanNothing{675, "Nothing was read: the setup is empty."};
inline constexpr MessageId ScanAllRead{681, "The modules, their options and all keys had been read before."};
inline constexpr MessageId ScanUndoHint{682, "Undo brings back what the window showed before."};
inline constexpr MessageId MapPosition{683, "Position "};
inline constexpr MessageId MapCode{684, ": code "};
inline constexpr MessageId MapSecondKM096{685, "a second main keyboard"};
inline constexpr MessageId MapSecondBacklight{686, "a second backlight part"};
inline constexpr MessageId MapSecondCode4{687, "a second further part of the main keyboard"};
inline constexpr MessageId MapSecondKM064{688, "a second extension keyboard"};
inline constexpr MessageId MapSecondMCR{689, "a second badge reader"};
inline constexpr MessageId MapSecondICCR{690, "a second chip card unit"};
inline constexpr MessageId MapMasterLate{691, "a main keyboard behind other modules"};
inline constexpr MessageId MapPartAlone{692, "a backlight part without a main keyboard before it"};
inline constexpr MessageId AbortInfo{
    693, "Terminate stops this operation and gives the line back. Continue lets it go on."};
inline constexpr MessageId Stopping{881, "Stopping ..."};
inline constexpr MessageId SimulatedLine{892, "Simulated line"};
inline constexpr MessageId SimulatedLineTip{893, "The line is answered by a simulation on this machine."};
inline constexpr MessageId BenchNotStarted{894, "The simulated line could not be started:"};
inline constexpr MessageId BenchEnded{895, "The simulated line has ended."};

// What the reader of a setup file expected; in the order of Expected.
inline constexpr MessageId ExpectedLineFeed{700, "a line feed after the carriage return"};
inline constexpr MessageId ExpectedSectionName{701, "the name of a section between [ and ]"};
inline constexpr MessageId ExpectedMasterFirst{702, "another module: [KM096] may only be the first one"};
inline constexpr MessageId ExpectedRoom{703, "no further module: a line holds seven at most"};
inline constexpr MessageId ExpectedOneOfAKind{704, "another module: each kind may stand in a setup once"};
inline constexpr MessageId ExpectedKeyAndValue{705, "a key, \"=\" and a value"};
inline constexpr MessageId ExpectedKnownKey{706, "one of the keys that a setup file may hold"};
inline constexpr MessageId ExpectedKeyOfSection{707, "a key that belongs to this section"};
inline constexpr MessageId ExpectedYesOrNo{708, "YES or NO"};
inline constexpr MessageId ExpectedOnOrOff{709, "ON or OFF"};
inline constexpr MessageId ExpectedTracks{710, "1,2,3 or 1,2 or 2,3"};
inline constexpr MessageId ExpectedSeparator{711, "exactly one character"};
inline constexpr MessageId ExpectedKeyMapSize{
    712, "one letter for each position of the key grid, no more and no fewer"};
inline constexpr MessageId ExpectedWholeKeys{
    713, "whole keys: VV one below the other, HH side by side, QQ over QQ"};
inline constexpr MessageId ExpectedKeyMapLetter{714, "only the letters S V H Q and = and _ in the key map"};
inline constexpr MessageId ExpectedContinuation{
    715, "the next row of the key map, after the \" _\" of the line before"};
inline constexpr MessageId ExpectedLanguageCode{716, "a language of three letters"};

// Serial ports and the line monitor.
inline constexpr MessageId BaudRateFrame{720, "Baud Rate"};
inline constexpr MessageId ExpectedPortsSection{721, "[PORTS] on a line of its own"};
inline constexpr MessageId ExpectedPort{722, "COM1 to COM4, \"=\" and a device"};
inline constexpr MessageId ExpectedPortOnce{723, "each of COM1 to COM4 no more than once"};
inline constexpr MessageId ExpectedDevice{
    724, "the path of a device, such as /dev/ttyUSB0, or a line on the network, such as tcp:host:4000"};
inline constexpr MessageId PortsTitle{725, "Serial Ports"};
inline constexpr MessageId PortsHint{
    726,
    "Choose the device behind each port, or type its path. An empty field stands for the built-in port."};
inline constexpr MessageId PortTry{727, "Try"};
inline constexpr MessageId PortsLookAgain{728, "&Look Again"};
inline constexpr MessageId PortsNone{729,
                                     "No serial device was found. Plug the adapter in, then look again."};
inline constexpr MessageId PortOpens{730, "The port opens."};
inline constexpr MessageId PortMissing{731, "There is no such device. Check that the adapter is plugged in."};
inline constexpr MessageId PortInUse{732,
                                     "Another program holds the port. Close that program, then try again."};
inline constexpr MessageId PortNotAllowed{733, "Your account may not use this port."};
inline constexpr MessageId PortGroup{734, "The group that may: "};
inline constexpr MessageId PortJoinGroup{735,
                                         "This command adds you to it; afterwards log out and in again:"};
inline constexpr MessageId PortNoGroup{736, "No group may use it: ask who administers this machine."};
inline constexpr MessageId PortBadSettings{737, "The port does not take these settings: "};
inline constexpr MessageId PortNotSerial{480, "This is not a serial port. Choose the device of one."};
inline constexpr MessageId PortPseudoTerminal{
    481, "A pseudo-terminal takes 8 data bits without parity only, not these settings: "};
inline constexpr MessageId PortOtherFailure{738, "The port does not open: "};
inline constexpr MessageId PortPathRefused{739,
                                           "Neither the path of a device nor a line such as tcp:host:4000."};
inline constexpr MessageId PortFixed{740, "Set by --line for this run"};
inline constexpr MessageId PortsFileBroken{741,
                                           "The port names could not be read. The built-in ports are used."};
inline constexpr MessageId PortsFileReplace{
    742, "The file of the port names is damaged. Replace it with these names?"};
inline constexpr MessageId PortsNotKept{743, "The port names could not be written. They hold for this run:"};
inline constexpr MessageId PortNotListed{744, "Not among the devices found"};
inline constexpr MessageId PortNameless{747, "Found; it gives no name of its own"};
inline constexpr MessageId SerialPortsMenu{745, "Serial &Ports..."};
inline constexpr MessageId LineMonitorMenu{746, "Line &Monitor..."};
inline constexpr MessageId LineMonitorTitle{750, "Line Monitor"};
inline constexpr MessageId MonitorTime{751, "Time"};
inline constexpr MessageId MonitorPort{752, "Port"};
inline constexpr MessageId MonitorDirection{753, "Direction"};
inline constexpr MessageId MonitorMeaning{754, "Meaning"};
inline constexpr MessageId MonitorDamage{755, "Damage"};
inline constexpr MessageId MonitorBytes{756, "Bytes"};
inline constexpr MessageId MonitorCharacters{757, "Characters"};
inline constexpr MessageId MonitorSent{758, "sent"};
inline constexpr MessageId MonitorReceived{759, "received"};
inline constexpr MessageId DamageBadFrame{760, "bad frame"};
inline constexpr MessageId DamageCutShort{761, "cut short"};
inline constexpr MessageId DamageNoise{762, "noise"};
inline constexpr MessageId MonitorPause{763, "&Pause"};
inline constexpr MessageId MonitorClear{764, "&Clear"};
inline constexpr MessageId MonitorSaveAs{765, "&Save As..."};
inline constexpr MessageId MonitorSaveTitle{766, "Save Line Monitor As"};
inline constexpr MessageId MonitorEmpty{767,
                                        "Nothing has been sent or received since the monitor was opened."};
inline constexpr MessageId FileNotSaved{496, "The file could not be saved."};
inline constexpr MessageId FileNotOpened{497, "The file could not be opened."};
inline constexpr MessageId FileNotWritten{768, "The file could not be written:"};
inline constexpr MessageId PortHolder{769, "The program that holds it: "};

// Why no flash image can be built; in the order of BuildRefusal::Reason.
inline constexpr MessageId RefusedRepeatedKind{
    840, "The flash image cannot be built: this module stands on the line more than once: "};
inline constexpr MessageId RefusedUnknownModule{
    841, "The flash image cannot be built: an unknown module stands on the line at position "};

// What was not taken from a flash image; in the order of TakeNotice::What.
inline constexpr MessageId TakenEmptyImage{
    842, "The device's flash memory holds no setup yet. No key maps were read from it."};
inline constexpr MessageId TakenModulesDisagree{
    843,
    "The modules in the device's flash memory are not those of the line. No key maps were read from it."};
inline constexpr MessageId TakenTableNotFound{
    844, "its key map cannot be found in the device, because an unknown module stands before it."};
inline constexpr MessageId TakenErasedKey{
    845, "its key map was not read from the device, because some of the keys were never written."};
inline constexpr MessageId TakenInvalidKeyMap{
    846, "its key map was not read from the device, because the keys do not fit the key grid."};
inline constexpr MessageId TakenSeparatorNotCarried{
    847, "this separator was read as none, because a setup file cannot carry it: track "};

// What a device cannot hold; in the order of UnheldSetting::What.
inline constexpr MessageId UnheldKey{848, "the keyboard cannot hold this key type: "};
inline constexpr MessageId UnheldNoKey{837, "the keyboard has a key here, which becomes unused"};
inline constexpr MessageId UnheldSeparator{849, "the reader cannot hold this separator, it would be none: "};

// What is wrong with a flash dump; in the order of DumpFault.
inline constexpr MessageId DumpForm{850,
                                    "this is not a dump line of an address, 16 numbers and 16 characters."};
inline constexpr MessageId DumpDigits{
    851, "two hexadecimal digits (0 to 9, A to F) and a blank belong to each byte."};
inline constexpr MessageId DumpAddress{
    852, "a line is missing, repeated or out of order. The address that belongs here is "};
inline constexpr MessageId DumpCharacters{
    853, "the characters on the right are not those of the numbers: the line is damaged."};
inline constexpr MessageId DumpMissingEnd{854, "the dump ends too early. The address that belongs here is "};
inline constexpr MessageId DumpAfterEnd{855, "the dump goes on behind the end of the flash memory."};
inline constexpr MessageId DumpDeviceMapSize{856, "the device map has more than seven modules."};
inline constexpr MessageId DumpDeviceMapCode{450, "the device map has a code that no module reports."};
inline constexpr MessageId DumpKindForm{451,
                                        R"(a dump's kind is "device" or "setup", and stands there once.)"};
inline constexpr MessageId DumpCrcForm{452, "a checksum is eight hexadecimal digits, and stands there once."};
inline constexpr MessageId DumpCrc{
    453, "the bytes of the dump do not have this checksum: at least one digit is wrong."};
inline constexpr MessageId DumpMapCrc{
    454, "the device map does not have this checksum: at least one digit is wrong."};
inline constexpr MessageId DumpRejected{857, "The file is not a whole flash dump."};

// What is different between two setups or two flash images.
inline constexpr MessageId ChangeAdded{858, "added"};
inline constexpr MessageId ChangeRemoved{859, "removed"};
inline constexpr MessageId ChangeOrder{860, "Order of the modules"};
inline constexpr MessageId ChangeUnknownModules{861, "Unknown modules"};
inline constexpr MessageId ChangeTracks{862, "tracks read"};
inline constexpr MessageId ChangeSeparator{863, "separator after track "};
inline constexpr MessageId ChangeAutoread{864, "auto-read"};
inline constexpr MessageId ChangeFiscal{865, "fiscal keyboard"};
inline constexpr MessageId ChangeBacklight{866, "backlight"};
inline constexpr MessageId ChangeYes{867, "yes"};
inline constexpr MessageId ChangeNo{868, "no"};
inline constexpr MessageId KeyStateNoKey{869, "no key"};
inline constexpr MessageId KeyStateErased{870, "erased"};
inline constexpr MessageId ChangeModule{871, "Module at position "};
inline constexpr MessageId ChangeKeyCode{872, "another key code"};
inline constexpr MessageId ChangeOtherBits{873, "other bits"};
inline constexpr MessageId ChangeBytes{874, "Bytes "};

// The EEPROM wizard. Its page texts take two numbers where one is too short.
inline constexpr MessageId EepromTitle{780, "EEPROM device ID programmer"};
inline constexpr MessageId EepromQualified{
    781, "This function must only be used by qualified personnel. The incorrect setting of EEPROM data can "};
inline constexpr MessageId EepromQualifiedMore{782,
                                               "render the relative module inaccessible to the POS unit. "};
inline constexpr MessageId EepromPanel{
    783, "Ensure that the currently selected panel uses the desired communications line. If not, exit the "};
inline constexpr MessageId EepromPanelMore{784, "wizard and choose another panel or communications line"};
inline constexpr MessageId EepromStart{785,
                                       R"(Press "Cancel" to exit this function or "Next >>" to continue)"};
inline constexpr MessageId EepromDisconnect{
    786,
    "Disconnect the serial cable running from the keyboard to the POS unit and connect the free end of "};
inline constexpr MessageId EepromDisconnectMore{787,
                                                "this cable to the corresponding   \"Y\"   cable connector."};
inline constexpr MessageId EepromConnect{
    788,
    "Connect the other  \"Y\"  cable communication connector  to the PC in place of the cable running to "};
inline constexpr MessageId EepromConnectMore{789, "the POS unit."};
inline constexpr MessageId EepromPower{
    790, "Connect the power line of the  \"Y\"  cable to the power supply unit lead and switch the unit on."};
inline constexpr MessageId EepromReady{791, R"(Press ""Next >>" when ready to continue)"};
inline constexpr MessageId EepromLineCom{792, "Line COM"};
inline constexpr MessageId EepromOpened{793, "successfully opened"};
inline constexpr MessageId EepromHeadAddress{794, "Address"};
inline constexpr MessageId EepromHeadDevice{795, "Device"};
inline constexpr MessageId EepromHeadData{796, "EEPROM DATA"};
inline constexpr MessageId EepromHeadChange{797, ">> Change to"};
inline constexpr MessageId EepromBack{798, "<< Back"};
inline constexpr MessageId EepromNext{799, "Next >>"};
inline constexpr MessageId EepromCancel{800, "Cancel"};
inline constexpr MessageId EepromWrite{801, "Write EEPROM"};
inline constexpr MessageId EepromWriteBack{802, "Write back saved data..."};
inline constexpr MessageId EepromNotOpened{804, "Unable to open serial line"};
inline constexpr MessageId EepromNoModules{805, "No MID modules found"};
inline constexpr MessageId EepromSearching{806, "EEPROM programming"};
inline constexpr MessageId EepromReading{807, "Reading Eeprom data"};
inline constexpr MessageId EepromWriting{808, "Writing Eeprom data"};
inline constexpr MessageId EepromNotReadAgain{
    694, "These were to be written and could not be read again; what they hold is not known. Addresses: "};
inline constexpr MessageId EepromReadFailed{809, "Communications error encountered during EEPROM read"};
inline constexpr MessageId EepromWriteFailed{810, "Communications error encountered during EEPROM write"};
inline constexpr MessageId EepromWritten{811, "Module EEPROM data has been updated"};
inline constexpr MessageId EepromShowNew{812, "Press \"OK\" to display new EEPROM data"};
inline constexpr MessageId EepromNoChoice{828, "(leave as it is)"};
inline constexpr MessageId EepromCheck{813, "Press \"OK\" to check EEPROM data:"};
inline constexpr MessageId EepromRepeats{
    814, "Modules answer below 9600 baud: the search repeats until you press \"Terminate\"."};
inline constexpr MessageId EepromStopped{
    815, "The search was stopped. Only the modules that were found so far are shown."};
inline constexpr MessageId EepromLineLost{
    816, "The serial line was lost. Check the adapter and the cables, then search again."};
inline constexpr MessageId EepromAskWrite{817, "Write these bytes to the modules?"};
inline constexpr MessageId EepromAskWriteMore{
    818, "A wrong identity makes a module inaccessible to the POS unit."};
inline constexpr MessageId EepromAddressWord{819, "Address "};
inline constexpr MessageId EepromNotWritten{820, "not written"};
inline constexpr MessageId EepromNotSaved{
    821, "The present EEPROM data could not be saved, so nothing was written:"};
inline constexpr MessageId EepromSaved{822, "The previous EEPROM data was saved in:"};
inline constexpr MessageId EepromFailedAddresses{823, "Addresses that failed: "};
inline constexpr MessageId EepromDiffers{824, "These addresses do not hold what was written: "};
inline constexpr MessageId EepromNotOnLine{
    825, "Nothing was written: these addresses of the file were not read from this line: "};
inline constexpr MessageId EepromBadCopy{826, "This file is not a saved copy of EEPROM data."};
inline constexpr MessageId EepromFilter{827, "Saved EEPROM data"};
inline constexpr MessageId EepromStatus{770, "EEPROM wizard on COM"};
inline constexpr MessageId EepromWriteBackTitle{771, "Write Back Saved Data"};
inline constexpr MessageId EepromNoneSoFar{776, "The search was stopped. No modules were found so far."};
inline constexpr MessageId EepromSearchAgain{
    835, "Check the cables, the power and the port. \"<< Back\" leads to a new search."};
inline constexpr MessageId EepromNothingRead{
    836, "No EEPROM data was read from this line. \"<< Back\" leads to a new search."};

// The question before EEPROM data is written, and what a saved copy adds to it.
inline constexpr MessageId EepromNow{772, "now"};
inline constexpr MessageId EepromToBeWritten{773, "to be written"};
inline constexpr MessageId EepromChanged{774, "changed"};
inline constexpr MessageId EepromSameBytes{775, "same bytes, written again"};
inline constexpr MessageId EepromMarks{779, "* marks the modules whose bytes change, ^^ the bytes."};
inline constexpr MessageId EepromCopyOf{777, "Saved copy: "};
inline constexpr MessageId EepromLeftOut{778, "Not read from this line, so not written: "};

// What the reader of such a copy expected; in the order of CopyExpected.
inline constexpr MessageId EepromCopyHeader{830, "\"Kelvora module identities\""};
inline constexpr MessageId EepromCopyDate{831, "\"Date \" and the date of the copy"};
inline constexpr MessageId EepromCopyLine{832, "\"Line \" and the serial line"};
inline constexpr MessageId EepromCopyBlock{
    833, "an address from 0 to 5, \": \" and eight bytes of two hexadecimal digits"};
inline constexpr MessageId EepromCopyNextAddress{834, "a higher address than in the line before"};

// The picture of a setup on paper and in files, and the comparison of two setups.
inline constexpr MessageId PrintMenu{897, "&Print..."};
inline constexpr MessageId PrintPreviewMenu{898, "Print Pre&view..."};
inline constexpr MessageId ExportMenu{899, "&Export..."};
inline constexpr MessageId CompareMenu{900, "Compare &With"};
inline constexpr MessageId CompareFile{901, "Another &File..."};
inline constexpr MessageId ExportTitle{902, "Export Picture As"};
inline constexpr MessageId FilterSvg{903, "Drawing"};
inline constexpr MessageId FilterPng{904, "Picture"};
inline constexpr MessageId FilterPdf{905, "PDF document"};
inline constexpr MessageId SheetPage{906, "Page "};
inline constexpr MessageId SheetEmpty{907, "This setup has no modules."};
inline constexpr MessageId SheetNotSaved{908, "with changes that are not saved"};
inline constexpr MessageId SheetKeys{909, "Keys "};
inline constexpr MessageId ChangePartOfKey{910, "part of key "};
inline constexpr MessageId SetupsTitle{911, "Compare Setups"};
inline constexpr MessageId SetupsEqual{912, "The two setups are equal."};
inline constexpr MessageId SetupsNoModule{913, "This setup does not have this module."};
inline constexpr MessageId SetupsMarks{914, "Marked: what differs. Framed: the difference chosen below."};
inline constexpr MessageId PictureNotMade{915, "The picture could not be made."};
inline constexpr MessageId NotPrinted{916,
                                      "The setup could not be printed. Check the printer, then try again."};
inline constexpr MessageId CompareTitle{917, "Choose a setup file to compare with."};

// What the device holds after a download; in the order of TransferResult::State.
inline constexpr MessageId TransferOld{920, "The device was not changed. It holds what it held before."};
inline constexpr MessageId TransferSame{921, "The device holds this image already. Nothing was written."};
inline constexpr MessageId TransferNew{922, "The download is done. The device holds the new image."};
inline constexpr MessageId RestoreNew{998, "The dump is restored. The device holds it as it is."};
inline constexpr MessageId TransferUnknown{
    923,
    "It is not known whether the device took the new image. Check the line, then run Verify to find out."};
inline constexpr MessageId RestoreUnknown{
    884,
    "It is not known whether the device took the dump. Check the line, then restore it again: that tells."};
inline constexpr MessageId TransferForeign{882, "Nothing was written to the device."};

// Why a download ended there.
inline constexpr MessageId TransferStopped{924, "The work was stopped."};
inline constexpr MessageId TransferNotKept{
    925,
    "The backup of the device's image cannot be written; nothing is sent without it. Check folder and disk."};
inline constexpr MessageId TransferDeviceChanged{
    926, "The device's flash memory changed while you were asked. Look at the changes anew, then decide."};
inline constexpr MessageId TransferFailedAfter{927,
                                               "The image is safe in the device. What failed came after it:"};
inline constexpr MessageId TransferDeclined{918, "The answer was no."};
inline constexpr MessageId TransferContentsKept{
    919, "Nobody has said Yes to that: --erase-content beside --yes does."};
inline constexpr MessageId TransferBackup{928, "The image that the device held before is kept in: "};

// Why a device is not to be written; in the order of TransferRefusal::Reason, the setup's own reasons aside.
inline constexpr MessageId TransferNoModules{
    929,
    "There is nothing to write: no modules are named. Add modules to the setup, or choose another dump."};
inline constexpr MessageId TransferUnknownModule{
    930, "An unknown module stands on the line. Nothing is written, since it could be damaged. Position: "};
inline constexpr MessageId TransferOtherModules{931,
                                                "The line has other modules, or has them in another order. "
                                                "Nothing is written. Scan the line to see them."};
inline constexpr MessageId ModulesOnLine{932, "On the line: "};
inline constexpr MessageId ModulesWanted{933, "Wanted there: "};

// The question before a download, and the lists of what differs.
inline constexpr MessageId DownloadTitle{934, "Flash Download"};
inline constexpr MessageId AskDownload{935, "Write this setup into the device's flash memory?"};
inline constexpr MessageId AskRestore{936, "Write this dump into the device's flash memory, as it is?"};
inline constexpr MessageId AskSetupDump{
    455, "This dump was made from a setup. Bytes of key contents that the device loses: "};
inline constexpr MessageId AskErasedDump{
    456, "This dump is erased where the device holds key contents. Bytes that the device loses: "};
inline constexpr MessageId AskContents{
    457, "Take this from the device all the same? What its keys send is then in the backup alone."};
inline constexpr MessageId AskSetupContents{
    466, "What a setup makes is no copy of a device. Write it all the same?"};
inline constexpr MessageId AskRightLine{
    458, "This dump names no modules. Is the device on this line the one that it was read from?"};
inline constexpr MessageId AskBackup{459, "What the device holds is kept in: "};
inline constexpr MessageId AskChanges{937, "This will change in the device:"};
inline constexpr MessageId AskUnheld{938, "The device cannot hold this; it is left out:"};
inline constexpr MessageId VerifyChanges{939, "What differs, from the setup to the device:"};
inline constexpr MessageId MoreChanges{940, "More differences: "};
inline constexpr MessageId DownloadStatus{941, "Downloading to COM"};
inline constexpr MessageId RestoreStatus{999, "Restoring to COM"};
inline constexpr MessageId VerifyStatus{942, "Verifying COM"};

// The regions of the flash; in the order of FlashRegions, then what is outside of them.
inline constexpr MessageId RegionOptions{943, "options"};
inline constexpr MessageId RegionModules{944, "modules"};
inline constexpr MessageId RegionTables{945, "key tables"};
inline constexpr MessageId RegionContents{946, "key contents"};
inline constexpr MessageId RegionOutside{947, "outside the regions"};

// Lines on the network, and bridges.
inline constexpr MessageId PortHostNotFound{
    948, "There is no machine of that name. Check the name, and the network."};
inline constexpr MessageId PortRefused{
    949, "The machine refuses the connection. Check the number behind its name, and that its server runs."};
inline constexpr MessageId PortNoAnswer{
    950, "The server does not answer. Check its address, the network and the firewall."};
inline constexpr MessageId PortNoSettings{
    951, "The server takes no settings by RFC 2217. Write tcp: or raw:, and set the speed in the server."};
inline constexpr MessageId PortDisconnected{952,
                                            "The connection to the server ended in the middle of the work."};
inline constexpr MessageId PortAnswersFixed{
    953, "The server answers. Speed and parity of the line are what is set in the server."};
inline constexpr MessageId PortHungUp{
    838, "The server hung up at once. Its line may be in use, or the server cannot open it."};
inline constexpr MessageId PortNoBridge{
    839, "What answers there is no bridge, or has got out of step. Check the address and the bridge."};
inline constexpr MessageId PortBridgeAnswers{
    954, "The connection is made. A scan shows whether a bridge answers."};
inline constexpr MessageId LineSettingsFixed{
    955, "The server has fixed the line's settings. Check there that they are the terminal's: "};
inline constexpr MessageId PortFixedSettings{
    956,
    "The server has fixed this line's speed, and the wizard has to change it. A server with RFC 2217 can."};
inline constexpr MessageId PortCommandsOnly{
    957,
    "A bridge stands behind this line. It carries commands alone, and the wizard needs the line itself."};
inline constexpr MessageId PortOnNetwork{958, "A line on the network"};
inline constexpr MessageId PortOnBridge{959, "A bridge: another program talks to the terminal"};
inline constexpr MessageId PortConnecting{960, "Connecting ..."};
inline constexpr MessageId PortsNetworkHint{
    961, "A line on the network is written tcp:HOST:PORT, a bridge bridge:HOST:PORT."};

// The windows of the flash tools.
inline constexpr MessageId RestoreMenu{970, "Re&store from Dump..."};
inline constexpr MessageId BackupsMenu{971, "&Backups..."};
inline constexpr MessageId BackupsTitle{972, "Backups"};
inline constexpr MessageId RestoreTitle{973, "Restore from Dump"};
inline constexpr MessageId ComparisonTitle{974, "Compare Flash Images"};
inline constexpr MessageId ComparisonFind{975, "&Find:"};
inline constexpr MessageId ComparisonFindHint{976, "Address (01A0), bytes (4A 4B) or text"};
inline constexpr MessageId ComparisonFindNext{977, "Find Ne&xt"};
inline constexpr MessageId ComparisonNotFound{978, "Neither image has this."};
inline constexpr MessageId ComparisonPrevious{979, "&Previous Difference"};
inline constexpr MessageId ComparisonNext{980, "&Next Difference"};
inline constexpr MessageId ComparisonCount{981, "Differences: "};
inline constexpr MessageId ComparisonEqual{982, "The two images are equal."};
inline constexpr MessageId ComparisonSaveTitle{983, "Save Comparison As"};
inline constexpr MessageId CompareImages{984, "&Compare Images..."};
inline constexpr MessageId ComparisonOffer{985, "Show the two images side by side?"};
inline constexpr MessageId BackupDate{986, "Date"};
inline constexpr MessageId BackupModules{987, "Modules"};
inline constexpr MessageId BackupState{988, "State"};
inline constexpr MessageId BackupWhole{989, "whole"};
inline constexpr MessageId BackupNoModules{717, "whole, but names no modules"};
inline constexpr MessageId BackupKind{460, "Kind"};
inline constexpr MessageId BackupTerminal{461, "Terminal"};
inline constexpr MessageId BackupFile{462, "File"};
inline constexpr MessageId DumpOfDevice{463, "device"};
inline constexpr MessageId DumpOfSetup{464, "setup"};
inline constexpr MessageId BackupsNone{
    990, "There are no backups yet. Each download or restore first keeps what the keyboard holds."};
inline constexpr MessageId BackupFolder{991, "Folder: "};
inline constexpr MessageId BackupRestore{992, "&Restore..."};
inline constexpr MessageId NoImageRead{
    993, "This window has read no flash image from the device yet. Rescan the line, or verify, first."};

}  // namespace Message

}  // namespace kelvora
