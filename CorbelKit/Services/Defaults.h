#pragma once

#include <string_view>

/// The names under which the maker's applications keep their settings, spelled as they are stored,
/// and the suites that applications share. No default values: whoever reads a setting knows what
/// counts where none is stored.
namespace CorbelKit::Defaults {

// clang-format off: one a line
inline constexpr std::string_view ignoreCaseAdvancedFind = "IgnoreCaseAdvancedFind";
inline constexpr std::string_view onlyInSelectionAdvancedFind = "OnlyInSelectionAdvancedFind";
inline constexpr std::string_view advancedFindSearchScope = "AdvancedFindSearchScope";
inline constexpr std::string_view useRegularExpressionsAdvancedFind = "UseRegularExpressionsAdvancedFind";
inline constexpr std::string_view alwaysShowToolbarInFullScreen = "AlwaysShowToolbarInFullScreen";
inline constexpr std::string_view alwaysUseFileNameExtension = "AlwaysUseFileNameExtension";
inline constexpr std::string_view appearance = "Appearance";
inline constexpr std::string_view automaticallyCheckForUpdate = "AutomaticallyCheckForUpdate";
inline constexpr std::string_view automaticallyOpenInTabs = "AutomaticallyOpenInTabs";
inline constexpr std::string_view automaticHelp = "AutomaticHelp";
inline constexpr std::string_view automaticEnvPath = "AutomaticEnvPath";
inline constexpr std::string_view autoSave = "AutoSave";
inline constexpr std::string_view checkCrashInterval = "CheckCrashInterval";
inline constexpr std::string_view colorModel = "ColorModel";
inline constexpr std::string_view autocompleteAfterDelay = "AutocompleteAfterDelay";
inline constexpr std::string_view autocompleteIncludeStandardWords = "AutocompleteIncludeStandardWords";
inline constexpr std::string_view autocompleteSuggestAutomatically = "AutocompleteSuggestAutomatically";
inline constexpr std::string_view convertLineEndings = "ConvertLineEndings";
inline constexpr std::string_view currentAction = "CurrentAction";
inline constexpr std::string_view currentLightTheme = "CurrentLightTheme";
inline constexpr std::string_view currentDarkTheme = "CurrentDarkTheme";
inline constexpr std::string_view defaultSyntax = "DefaultSyntax";
inline constexpr std::string_view directLinkDetection = "DirectLinkDetection";
inline constexpr std::string_view editedTheme = "EditedTheme";
inline constexpr std::string_view enableRowActions = "EnableRowActions";
inline constexpr std::string_view enableUndo = "EnableUndo";
inline constexpr std::string_view encodingsPopUp = "EncodingsPopUp";
inline constexpr std::string_view exceptions = "Exceptions";
inline constexpr std::string_view excludePrefixes = "ExcludePrefixes";
inline constexpr std::string_view findFoldersBookmarks = "FindFoldersBookmarks";
inline constexpr std::string_view fileNameExtension = "FileNameExtension";
inline constexpr std::string_view firstLaunch = "FirstLaunch";
inline constexpr std::string_view foldersShowsHidden = "FoldersShowsHidden";
inline constexpr std::string_view hasRegisteredPrivilegedTool = "HasRegisteredPrivilegedTool";
inline constexpr std::string_view hasRegisteredUpdatePrivilegedTool = "HasRegisteredUpdatePrivilegedTool";
inline constexpr std::string_view highlightCurrentLine = "HighlightCurrentLine";
inline constexpr std::string_view indentNewLinesAutomatically = "IndentNewLinesAutomatically";
inline constexpr std::string_view infoLaunchdTab = "InfoLaunchdTab";
inline constexpr std::string_view informedAboutFullDiskAccess = "InformedAboutFullDiskAccess";
inline constexpr std::string_view languageToken = "LanguageToken";
inline constexpr std::string_view launchdSectionWhenCollapsed = "LaunchdSectionWhenCollapsed";
inline constexpr std::string_view launchdSectionPathsCollapsed = "LaunchdSectionPathsCollapsed";
inline constexpr std::string_view launchdSectionLimitsCollapsed = "LaunchdSectionLimitsCollapsed";
inline constexpr std::string_view launchdSectionRootCollapsed = "LaunchdSectionRootCollapsed";
inline constexpr std::string_view launchdSectionMiscellaneousCollapsed = "LaunchdSectionMiscellaneousCollapsed";
inline constexpr std::string_view launchdSectionEnvironmentVariablesCollapsed = "LaunchdSectionEnvironmentVariablesCollapsed";
inline constexpr std::string_view launchdSectionLaunchEventsCollapsed = "LaunchdSectionLaunchEventsCollapsed";
inline constexpr std::string_view launchdSectionMachServicesCollapsed = "LaunchdSectionMachServicesCollapsed";
inline constexpr std::string_view launchdSectionSocketsCollapsed = "LaunchdSectionSocketsCollapsed";
inline constexpr std::string_view launchdSectionDeveloperCollapsed = "LaunchdSectionDeveloperCollapsed";
inline constexpr std::string_view launchdSectionDeprecatedCollapsed = "LaunchdSectionDeprecatedCollapsed";
inline constexpr std::string_view launchdSectionUnknownCollapsed = "LaunchdSectionUnknownCollapsed";
inline constexpr std::string_view launchdSectionNotesCollapsed = "LaunchdSectionNotesCollapsed";
inline constexpr std::string_view launchdSectionTagsCollapsed = "LaunchdSectionTagsCollapsed";
inline constexpr std::string_view launchdTab = "LaunchdTab";
inline constexpr std::string_view lineEndings = "LineEndings";
inline constexpr std::string_view lineSpacing = "LineSpacing";
inline constexpr std::string_view lineWrap = "LineWrap";
inline constexpr std::string_view logLength = "LogLength";
inline constexpr std::string_view logPeriod = "LogPeriod";
inline constexpr std::string_view multiTouchGestures = "MultiTouchGestures";
inline constexpr std::string_view notificationTab = "NotificationTab";
inline constexpr std::string_view openAtLogin = "OpenAtLogin";
inline constexpr std::string_view openDocumentWithTextEncoding = "OpenDocumentWithTextEncoding";
inline constexpr std::string_view openUntitled = "OpenUntitled";
inline constexpr std::string_view numberOfSavedRevisions = "NumberOfSavedRevisions";
inline constexpr std::string_view preferencesFrame = "PreferencesFrame";
inline constexpr std::string_view preferencesTab = "PreferencesTab";
inline constexpr std::string_view preferFullScreen = "PreferFullScreen";
inline constexpr std::string_view printFont = "PrintFont";
inline constexpr std::string_view printHeader = "PrintHeader";
inline constexpr std::string_view printLineNumbers = "PrintLineNumbers";
inline constexpr std::string_view marginsMin = "MarginsMin";
inline constexpr std::string_view onlyPrintSelection = "OnlyPrintSelection";
inline constexpr std::string_view printSyntaxColours = "PrintSyntaxColours";
inline constexpr std::string_view randomColors = "RandomColors";
inline constexpr std::string_view rawKeys = "RawKeys";
inline constexpr std::string_view resume = "Resume";
inline constexpr std::string_view quitAlwaysKeepsWindows = "NSQuitAlwaysKeepsWindows";
inline constexpr std::string_view runAgent = "RunAgent";
inline constexpr std::string_view securityBookmarks = "SecurityBookmarks";
inline constexpr std::string_view inspectorMode = "InspectorMode";
inline constexpr std::string_view viewMode = "ViewMode";
inline constexpr std::string_view selectedToolsMode = "SelectedToolsMode";
inline constexpr std::string_view shell = "Shell";
inline constexpr std::string_view showInspector = "ShowInspector";
inline constexpr std::string_view listVesperHelper = "ListVesperHelper";
inline constexpr std::string_view showInvalidData = "ShowInvalidData";
inline constexpr std::string_view showInvisibleCharacters = "ShowInvisibleCharacters";
inline constexpr std::string_view showLineNumbers = "ShowLineNumbers";
inline constexpr std::string_view showPageGuide = "ShowPageGuide";
inline constexpr std::string_view showPageGuideAtColumn = "ShowPageGuideAtColumn";
inline constexpr std::string_view showPathBar = "ShowPathBar";
inline constexpr std::string_view showSidebar = "ShowSidebar";
inline constexpr std::string_view showStatusBar = "ShowStatusBar";
inline constexpr std::string_view showSyntaxColours = "ShowSyntaxColours";
inline constexpr std::string_view showSystemJobs = "ShowSystemJobs";
inline constexpr std::string_view showSystemLoginItems = "ShowSystemLoginItems";
inline constexpr std::string_view showTips = "ShowTips";
inline constexpr std::string_view showTitle = "ShowTitle";
inline constexpr std::string_view showTransformationPreview = "showTransformationPreview";
inline constexpr std::string_view skipUpdateBuild = "SkipUpdateBuild";
inline constexpr std::string_view sidebarFirstShow = "SidebarFirstShow";
inline constexpr std::string_view automaticSpellingCorrection = "AutomaticSpellingCorrection";
inline constexpr std::string_view continuousSpellChecking = "ContinuousSpellChecking";
inline constexpr std::string_view grammarChecking = "GrammarChecking";
inline constexpr std::string_view splitViewPosition = "SplitViewPosition";
inline constexpr std::string_view statusBarCharacters = "StatusBarCharacters";
inline constexpr std::string_view statusBarEncoding = "StatusBarEncoding";
inline constexpr std::string_view statusBarLine = "StatusBarLine";
inline constexpr std::string_view statusBarPosition = "StatusBarPosition";
inline constexpr std::string_view statusBarSelection = "StatusBarSelection";
inline constexpr std::string_view statusBarWords = "StatusBarWords";
inline constexpr std::string_view automaticDashSubstitution = "AutomaticDashSubstitution";
inline constexpr std::string_view automaticDataDetection = "AutomaticDataDetection";
inline constexpr std::string_view automaticLinkDetection = "AutomaticLinkDetection";
inline constexpr std::string_view automaticQuoteSubstitution = "AutomaticQuoteSubstitution";
inline constexpr std::string_view automaticTextReplacement = "AutomaticTextReplacement";
inline constexpr std::string_view smartInsertDelete = "SmartInsertDelete";
inline constexpr std::string_view alertComplexWhat = "AlertComplexWhat";
inline constexpr std::string_view suppressAlertQuit = "SuppressAlertQuit";
inline constexpr std::string_view suppressResetBackgroundItems = "SuppressResetBackgroundItems";
inline constexpr std::string_view syntaxExtensions = "SyntaxExtensions";
inline constexpr std::string_view tabIcon = "TabIcon";
inline constexpr std::string_view tabWidth = "TabWidth";
inline constexpr std::string_view transformationsSelection = "TransformationsSelection";
inline constexpr std::string_view useCommandNumberToSwitchTabs = "UseCommandNumberToSwitchTabs";
inline constexpr std::string_view useFirstLineAsTitle = "UseFirstLineAsTitle";
inline constexpr std::string_view useSpacesInsteadOfTabs = "UseSpacesInsteadOfTabs";
inline constexpr std::string_view utf8WithBOM = "UTF8WithBOM";
inline constexpr std::string_view verticalText = "VerticalText";
// clang-format on

/// Applications that share settings.
enum class ApplicationGroup { data, mainApplication, textEditor };

/// The domain of the settings that the group shares: see `Platform::UserDefaults::suite`.
constexpr std::string_view suiteName(ApplicationGroup group) {
    switch (group) {
    case ApplicationGroup::data:
        return "QX42K7M3ZP.com.tarnwell.Data";
    case ApplicationGroup::mainApplication:
        return "QX42K7M3ZP.com.tarnwell.Vesper";
    case ApplicationGroup::textEditor:
        return "QX42K7M3ZP.com.tarnwell.Brindle";
    }
    return {};
}

} // namespace CorbelKit::Defaults
