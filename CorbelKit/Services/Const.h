#pragma once

#include "CorbelKit/Services/Maker.h"
#include "CorbelKit/Services/TypedIdentifier.h"

#include <string>
#include <string_view>

// Tables: one constant a line, in the order in which they are told.
// clang-format off

/// The fixed names that the maker's applications share, each in one place.
namespace CorbelKit::Const {

/// Keys of property lists and records.
namespace Key {
inline constexpr std::string_view build = "build";
inline constexpr std::string_view bundleProgram = "BundleProgram";
inline constexpr std::string_view children = "children";
inline constexpr std::string_view data = "data";
inline constexpr std::string_view extensions = "extensions";
inline constexpr std::string_view fileExtendedAttributes = "NSFileExtendedAttributes";
inline constexpr std::string_view identifiers = "identifiers";
inline constexpr std::string_view inlined = "inline";
inline constexpr std::string_view item = "item";
inline constexpr std::string_view kind = "kind";
inline constexpr std::string_view label = "Label";
inline constexpr std::string_view name = "name";
inline constexpr std::string_view root = "root";
inline constexpr std::string_view shell = "shell";
inline constexpr std::string_view signature = "signature";
inline constexpr std::string_view suppressResult = "suppressResult";
inline constexpr std::string_view text = "text";
inline constexpr std::string_view uuid = "uuid";
inline constexpr std::string_view value = "value";
inline constexpr std::string_view version = "version";

/// Names of extended attributes of files.
namespace ExtendedAttributes {
inline constexpr std::string_view finderComment = "com.apple.metadata:kMDItemFinderComment";
inline constexpr std::string_view userTags = "com.apple.metadata:_kMDItemUserTags";
} // namespace ExtendedAttributes
} // namespace Key

/// Names of folders, and how bundles end.
namespace PathComponent {
inline constexpr std::string_view app = ".app";
inline constexpr std::string_view appFolder = ".app/";
inline constexpr std::string_view applications = "Applications";
inline constexpr std::string_view applicationSupport = "Application Support";
inline constexpr std::string_view automator = "Automator";
inline constexpr std::string_view caches = "Caches";
inline constexpr std::string_view contents = "Contents";
inline constexpr std::string_view documents = "Documents";
inline constexpr std::string_view helpers = "Helpers";
inline constexpr std::string_view launchAgents = "LaunchAgents";
inline constexpr std::string_view launchDaemons = "LaunchDaemons";
inline constexpr std::string_view launchServices = "LaunchServices";
inline constexpr std::string_view library = "Library";
inline constexpr std::string_view loginItems = "LoginItems";
inline constexpr std::string_view macOS = "MacOS";
inline constexpr std::string_view plugIns = "PlugIns";
inline constexpr std::string_view privilegedHelperTools = "PrivilegedHelperTools";
inline constexpr std::string_view quickLook = "QuickLook";
inline constexpr std::string_view resources = "Resources";
inline constexpr std::string_view spotlight = "Spotlight";
inline constexpr std::string_view startupItems = "StartupItems";
inline constexpr std::string_view system = "System";
inline constexpr std::string_view utilities = "Utilities";
inline constexpr std::string_view xpcServices = "XPCServices";
} // namespace PathComponent

/// Extensions of file names, without the period.
namespace PathExtension {
inline constexpr std::string_view plist = "plist";
} // namespace PathExtension

/// Components of paths on the maker's web site.
namespace SiteComponent {
inline constexpr std::string_view downloads = "downloads";
inline constexpr std::string_view updates = "updates";
} // namespace SiteComponent

/// UTF-16 code units.
namespace UniChar {
namespace LineEnding {
inline constexpr char16_t lineFeed = 10;
inline constexpr char16_t carriageReturn = 13;
} // namespace LineEnding

inline constexpr char16_t lineSeparator = 8232;
inline constexpr char16_t paragraphSeparator = 8233;
inline constexpr char16_t nextLine = 133;
inline constexpr char16_t ampersand = 38;
inline constexpr char16_t backslash = 92;
inline constexpr char16_t colon = 58;
inline constexpr char16_t hyphen = 45;
inline constexpr char16_t dollar = 36;
inline constexpr char16_t doubleQuote = 34;
inline constexpr char16_t equals = 61;
inline constexpr char16_t greaterThan = 62;
inline constexpr char16_t leftBrace = 123;
inline constexpr char16_t leftParenthesis = 40;
inline constexpr char16_t leftBracket = 91;
inline constexpr char16_t lessThan = 60;
inline constexpr char16_t noBreakSpace = 160;
inline constexpr char16_t percent = 37;
inline constexpr char16_t period = 46;
inline constexpr char16_t rightBrace = 125;
inline constexpr char16_t rightParenthesis = 41;
inline constexpr char16_t rightBracket = 93;
inline constexpr char16_t singleQuote = 39;
inline constexpr char16_t slash = 47;
inline constexpr char16_t space = 32;
inline constexpr char16_t tab = 9;
} // namespace UniChar

/// Shown in place of characters that cannot be seen.
namespace InvisibleSymbol {
inline constexpr std::string_view pilcrow = "¶";
inline constexpr std::string_view macron = "¯";
inline constexpr std::string_view middleDot = "·";
inline constexpr std::string_view notSign = "¬";
inline constexpr std::string_view doubleDagger = "‡";
inline constexpr std::string_view noBreakSpace = "\u00A0";
} // namespace InvisibleSymbol

namespace Character {} // keeps its place; nothing stands there so far

/// Virtual key codes of the hardware.
namespace KeyCode {
inline constexpr int tab = 48;
inline constexpr int keypadEnter = 76;
inline constexpr int letterE = 14;
} // namespace KeyCode

/// Types of what is dragged and dropped.
namespace Pasteboard {
inline constexpr std::string_view string = "public.utf8-plain-text";
inline constexpr std::string_view document = "com.tarnwell.Document";
inline constexpr std::string_view folder = "com.tarnwell.Folder";
inline constexpr std::string_view item = "com.tarnwell.Item";
inline constexpr std::string_view row = "com.tarnwell.Row";
inline constexpr std::string_view tag = "com.tarnwell.Tag";
} // namespace Pasteboard

/// What the signature of the maker's own code looks like.
namespace Codesign {
inline constexpr std::string_view tool = "/usr/bin/codesign";
/// The authority chain as the tool prints it, a line each.
inline constexpr std::string_view authorities = "Authority=Developer ID Application: " CORBEL_CERTIFICATE_HOLDER " (QX42K7M3ZP)\nAuthority=Developer ID Certification Authority\nAuthority=Apple Root CA\n";
/// Signed by Apple, for the App Store, or with a Developer ID.
inline constexpr std::string_view requirement = "(anchor apple) or (anchor apple generic and certificate leaf[field.1.2.840.113635.100.6.1.9] exists) or (anchor apple generic and certificate 1[field.1.2.840.113635.100.6.2.6] exists and certificate leaf[field.1.2.840.113635.100.6.1.13] exists)";
} // namespace Codesign

/// What has no list of its own.
namespace Miscellaneous {
inline constexpr std::string_view frame = "frame";
inline constexpr std::string_view separator = " — ";
inline constexpr std::string_view fontSizeSeparator = "@@@@";
/// The extended attribute that holds a file's text encoding.
inline constexpr std::string_view textEncodingAttribute = "com.apple.TextEncoding";
inline constexpr std::string_view teamIdentifier = "QX42K7M3ZP";
/// The maker's reverse-DNS prefix.
inline constexpr std::string_view identifierPrefix = "com.tarnwell.";
inline constexpr std::string_view privacy = "privacy";
inline constexpr std::string_view sessionLoginItems = "com.apple.LSSharedFileList.SessionLoginItems";
/// Finds all applications with Spotlight.
inline constexpr std::string_view applicationsQuery = "kMDItemContentType == 'com.apple.application-bundle'";
inline constexpr std::string_view site = Maker::site;
inline constexpr std::string_view termsPage = Maker::termsPage;
inline constexpr std::string_view supportAddress = Maker::supportAddress;
} // namespace Miscellaneous

/// Keys of what a document restores of its state.
namespace Restore {
inline constexpr std::string_view compareA = "compareA";
inline constexpr std::string_view compareB = "compareB";
inline constexpr std::string_view data = "data";
inline constexpr std::string_view find = "find";
inline constexpr std::string_view hasManuallyChangedSyntax = "hasManuallyChangedSyntax";
inline constexpr std::string_view lineEnding = "lineEnding";
inline constexpr std::string_view replace = "replace";
inline constexpr std::string_view selectedRange = "selectedRange";
inline constexpr std::string_view selection = "selection";
inline constexpr std::string_view scrollPoint = "scrollPoint";
inline constexpr std::string_view sidebar = "sidebar";
inline constexpr std::string_view syntaxName = "syntaxName";
} // namespace Restore

namespace Size {} // keeps its place; nothing stands there so far

/// The applications that work together.
namespace App {
/// Names of applications, as the user knows them.
namespace Name {
inline constexpr std::string_view vesper = "Vesper";
inline constexpr std::string_view vesperX = "Vesper X";
inline constexpr std::string_view vesperPro = "Vesper Pro";
inline constexpr std::string_view vesperProAgent = "Vesper Pro Agent";
inline constexpr std::string_view brindle = "Brindle";
inline constexpr std::string_view suffix = ".app";

/// The name of the system's settings application in the user's language, asked once, on first use;
/// "System Settings" where there is none. Any thread.
const std::string& systemSettings();
} // namespace Name

/// Bundle identifiers.
namespace Identifier {
inline constexpr std::string_view vesper = "com.tarnwell.Vesper10";
inline constexpr std::string_view vesperPro = "com.tarnwell.VesperPro10";
inline constexpr std::string_view brindle = "com.tarnwell.Brindle14";
/// The agent of an older generation, which the present one removes.
inline constexpr std::string_view vesperX4Agent = "com.tarnwell.VesperX4Agent";
inline constexpr std::string_view vesperProAgent = "com.tarnwell.VesperProAgent";
inline constexpr std::string_view scriptEditor = "com.apple.ScriptEditor2";
inline constexpr std::string_view shortcuts = "com.apple.shortcuts";
inline constexpr std::string_view systemSettings = "com.apple.systempreferences";
} // namespace Identifier

namespace URL {
/// The scheme of the main application's job links; Base64 of the job file's path follows "://".
inline constexpr std::string_view jobLinkScheme = "vesperpro10joburl";
} // namespace URL
} // namespace App

/// Keys of an earlier version of a job.
namespace Revision {
inline constexpr std::string_view date = "RevisionDate";
inline constexpr std::string_view plist = "RevisionPlist";
} // namespace Revision

/// Services within the main application.
namespace XPC::Name::Vesper {
/// The main application's action service, in its Contents/XPCServices.
inline constexpr std::string_view action = "Vesper Pro Action.xpc";
} // namespace XPC::Name::Vesper

/// Sizes of icons, in points.
namespace Dimension::Icon {
inline constexpr double edge = 16.0;
} // namespace Dimension::Icon

/// Names of files and folders of user data.
namespace FileName {
inline constexpr std::string_view dsStore = ".DS_Store";
inline constexpr std::string_view exceptions = "Exceptions.plist";
inline constexpr std::string_view icons = "Icons";
inline constexpr std::string_view identifiers = "Identifiers";
inline constexpr std::string_view notes = "Notes.plist";
inline constexpr std::string_view revisions = "Revisions.plist";
inline constexpr std::string_view smartFolders = "SmartFolders.plist";
inline constexpr std::string_view tags = "Tags.plist";
} // namespace FileName

/// Absolute paths of tools.
namespace Command {
inline constexpr std::string_view automator = "/usr/bin/automator";
inline constexpr std::string_view bash = "/bin/bash";
inline constexpr std::string_view csh = "/bin/csh";
inline constexpr std::string_view crontab = "/usr/bin/crontab";
inline constexpr std::string_view file = "/usr/bin/file";
inline constexpr std::string_view id = "/usr/bin/id";
inline constexpr std::string_view ksh = "/bin/ksh";
inline constexpr std::string_view launchctl = "/bin/launchctl";
inline constexpr std::string_view ls = "/bin/ls";
inline constexpr std::string_view mdfind = "/usr/bin/mdfind";
inline constexpr std::string_view open = "/usr/bin/open";
inline constexpr std::string_view osascript = "/usr/bin/osascript";
inline constexpr std::string_view perl = "/usr/bin/perl";
inline constexpr std::string_view php = "/usr/bin/php";
inline constexpr std::string_view python3 = "/usr/bin/python3";
inline constexpr std::string_view ruby = "/usr/bin/ruby";
inline constexpr std::string_view sh = "/bin/sh";
inline constexpr std::string_view shortcuts = "/usr/bin/shortcuts";
inline constexpr std::string_view swift = "/usr/bin/swift";
inline constexpr std::string_view tcsh = "/bin/tcsh";
inline constexpr std::string_view which = "/usr/bin/which";
inline constexpr std::string_view zsh = "/bin/zsh";
} // namespace Command

/// Sizes from which on work leaves the main thread.
namespace ThreadLimit {
inline constexpr int data = 60000;
/// Lengths of texts, in characters.
namespace String {
inline constexpr int find = 6000;
inline constexpr int syntax = 2000;
} // namespace String
} // namespace ThreadLimit

// Names of things that the system tells apart by their type as well.

/// @{
/// Names one thing of the kind that the type is called after.
using NotificationActionIdentifier = TypedIdentifier<struct NotificationActionKind>;
using NotificationCategoryIdentifier = TypedIdentifier<struct NotificationCategoryKind>;
using WindowIdentifier = TypedIdentifier<struct WindowKind>;
using TouchBarDomain = TypedIdentifier<struct TouchBarDomainKind>;
using TouchBarIdentifier = TypedIdentifier<struct TouchBarKind>;
using TouchBarItemIdentifier = TypedIdentifier<struct TouchBarItemKind>;
using StoryboardSegueIdentifier = TypedIdentifier<struct StoryboardSegueKind>;
using UserInterfaceItemIdentifier = TypedIdentifier<struct UserInterfaceItemKind>;
/// @}

/// Buttons of notifications.
namespace NotificationAction {
/// The one action of the notification of a change.
inline constexpr NotificationActionIdentifier show{"ShowAction"};
} // namespace NotificationAction

/// Kinds of notifications, by who posts them.
namespace NotificationCategory::Vesper {
inline constexpr NotificationCategoryIdentifier agent{"VesperAgent"};
inline constexpr NotificationCategoryIdentifier vesper{"Vesper"};
} // namespace NotificationCategory::Vesper

/// Windows of the main application.
namespace Window {
inline constexpr WindowIdentifier main{"MainWindow"};
inline constexpr WindowIdentifier paths{"PathsWindow"};
inline constexpr WindowIdentifier settings{"SettingsWindow"};
} // namespace Window

/// Touch bars, by application, and what stands in them.
namespace TouchBar {
namespace Domain {
inline constexpr TouchBarDomain textEditor{"com.tarnwell.Brindle10"};
inline constexpr TouchBarDomain olderMainApplication{"com.tarnwell.VesperX5"};
inline constexpr TouchBarDomain pebblit{"com.tarnwell.Pebblit"};
inline constexpr TouchBarDomain kit{"com.tarnwell.CorbelKit"};
} // namespace Domain

namespace TextEditor {
inline constexpr TouchBarIdentifier document{"com.tarnwell.Brindle10.documentTouchBar"};
inline constexpr TouchBarIdentifier find{"com.tarnwell.Brindle10.findTouchBar"};
inline constexpr TouchBarIdentifier preferences{"com.tarnwell.Brindle10.preferencesTouchBar"};
} // namespace TextEditor

namespace OlderMainApplication {
inline constexpr TouchBarIdentifier main{"com.tarnwell.VesperX5.mainTouchBar"};
inline constexpr TouchBarIdentifier newJob{"com.tarnwell.VesperX5.newTouchBar"};
inline constexpr TouchBarIdentifier preferences{"com.tarnwell.VesperX5.preferencesTouchBar"};
} // namespace OlderMainApplication

namespace Pebblit {
inline constexpr TouchBarIdentifier main{"com.tarnwell.Pebblit.mainTouchBar"};
inline constexpr TouchBarIdentifier sidebar{"com.tarnwell.Pebblit.sidebarTouchBar"};
inline constexpr TouchBarIdentifier mode{"com.tarnwell.Pebblit.modeTouchBar"};
} // namespace Pebblit

namespace Kit {
inline constexpr TouchBarIdentifier preferences{"com.tarnwell.CorbelKit.preferencesTouchBar"};
} // namespace Kit

namespace Item {
inline constexpr TouchBarItemIdentifier document{"com.tarnwell.Brindle10.document"};
inline constexpr TouchBarItemIdentifier documentShare{"com.tarnwell.Brindle10.document.share"};
inline constexpr TouchBarItemIdentifier find{"com.tarnwell.Brindle10.find"};
inline constexpr TouchBarItemIdentifier findFind{"com.tarnwell.Brindle10.find.find"};
inline constexpr TouchBarItemIdentifier findFindScope{"com.tarnwell.Brindle10.find.find.scope"};
inline constexpr TouchBarItemIdentifier findFindSidebar{"com.tarnwell.Brindle10.find.find.sidebar"};
inline constexpr TouchBarItemIdentifier pebblitMain{"com.tarnwell.Pebblit.main"};
inline constexpr TouchBarItemIdentifier pebblitMode{"com.tarnwell.Pebblit.main.mode"};
inline constexpr TouchBarItemIdentifier preferences{"com.tarnwell.CorbelKit.preferences"};
inline constexpr TouchBarItemIdentifier preferencesTab{"com.tarnwell.CorbelKit.preferences.tab"};
} // namespace Item
} // namespace TouchBar

/// Steps from one view to another.
namespace StoryboardSegue {
inline constexpr StoryboardSegueIdentifier backgroundItems{"BackgroundItemsSegue"};
inline constexpr StoryboardSegueIdentifier columns{"ColumnsSegue"};
inline constexpr StoryboardSegueIdentifier commandResult{"CommandResultSegue"};
inline constexpr StoryboardSegueIdentifier disabled{"DisabledSegue"};
inline constexpr StoryboardSegueIdentifier duplicate{"DuplicateSegue"};
inline constexpr StoryboardSegueIdentifier documentsPopover{"DocumentsPopoverSegue"};
inline constexpr StoryboardSegueIdentifier goToLine{"GoToLineSegue"};
inline constexpr StoryboardSegueIdentifier hex{"HexSegue"};
inline constexpr StoryboardSegueIdentifier import{"ImportSegue"};
inline constexpr StoryboardSegueIdentifier info{"InfoSegue"};
inline constexpr StoryboardSegueIdentifier infoAppService{"InfoAppServiceSegue"};
inline constexpr StoryboardSegueIdentifier infoCron{"InfoCronSegue"};
inline constexpr StoryboardSegueIdentifier infoFileJob{"InfoFileJobSegue"};
inline constexpr StoryboardSegueIdentifier infoLaunchd{"InfoLaunchdSegue"};
inline constexpr StoryboardSegueIdentifier infoLoginItem{"InfoLoginItemSegue"};
inline constexpr StoryboardSegueIdentifier infoStartupItem{"InfoStartupItemSegue"};
inline constexpr StoryboardSegueIdentifier infoPrivilegedHelperTool{"InfoPrivilegedHelperToolSegue"};
inline constexpr StoryboardSegueIdentifier infoUnreadable{"InfoUnreadableSegue"};
inline constexpr StoryboardSegueIdentifier language{"LanguageSegue"};
inline constexpr StoryboardSegueIdentifier loading{"LoadingSegue"};
inline constexpr StoryboardSegueIdentifier log{"LogSegue"};
inline constexpr StoryboardSegueIdentifier newItem{"NewSegue"};
inline constexpr StoryboardSegueIdentifier newPlist{"NewPlistSegue"};
inline constexpr StoryboardSegueIdentifier newScript{"NewScriptSegue"};
inline constexpr StoryboardSegueIdentifier plist{"PlistSegue"};
inline constexpr StoryboardSegueIdentifier power{"PowerSegue"};
inline constexpr StoryboardSegueIdentifier preview{"PreviewSegue"};
inline constexpr StoryboardSegueIdentifier quickLook{"QuickLookSegue"};
inline constexpr StoryboardSegueIdentifier scriptEdit{"ScriptEditSegue"};
inline constexpr StoryboardSegueIdentifier smartFolders{"SmartFoldersSegue"};
inline constexpr StoryboardSegueIdentifier stringPreviewText{"StringPreviewTextSegue"};
inline constexpr StoryboardSegueIdentifier test{"TestSegue"};
inline constexpr StoryboardSegueIdentifier textScanner{"TextScannerSegue"};
} // namespace StoryboardSegue

/// Parts of views.
namespace UserInterfaceItem {
namespace Cell {
inline constexpr UserInterfaceItemIdentifier application{"ApplicationCell"};
inline constexpr UserInterfaceItemIdentifier data{"DataCell"};
inline constexpr UserInterfaceItemIdentifier entitlement{"EntitlementCell"};
inline constexpr UserInterfaceItemIdentifier header{"HeaderCell"};
inline constexpr UserInterfaceItemIdentifier findResult{"FindResultIdentifier"};
inline constexpr UserInterfaceItemIdentifier findResultGroup{"FindResultGroupIdentifier"};
} // namespace Cell

namespace Item {
inline constexpr UserInterfaceItemIdentifier children{"Children"};
inline constexpr UserInterfaceItemIdentifier group{"Group"};
inline constexpr UserInterfaceItemIdentifier groupHeader{"GroupHeader"};
inline constexpr UserInterfaceItemIdentifier header{"HeaderItem"};
inline constexpr UserInterfaceItemIdentifier item{"Item"};
inline constexpr UserInterfaceItemIdentifier lineNumber{"LineNumber"};
inline constexpr UserInterfaceItemIdentifier searchResult{"SearchResult"};
inline constexpr UserInterfaceItemIdentifier time{"Time"};
inline constexpr UserInterfaceItemIdentifier button{"Button"};
} // namespace Item

/// Of the list of jobs.
namespace Column {
inline constexpr UserInterfaceItemIdentifier commands{"Commands"};
inline constexpr UserInterfaceItemIdentifier date{"Date"};
inline constexpr UserInterfaceItemIdentifier enabled{"Enabled"};
inline constexpr UserInterfaceItemIdentifier folders{"Folders"};
inline constexpr UserInterfaceItemIdentifier keepAlive{"KeepAlive"};
inline constexpr UserInterfaceItemIdentifier kind{"Kind"};
inline constexpr UserInterfaceItemIdentifier limit{"Limit"};
inline constexpr UserInterfaceItemIdentifier message{"Message"};
inline constexpr UserInterfaceItemIdentifier name{"Name"};
inline constexpr UserInterfaceItemIdentifier notification{"Notification"};
inline constexpr UserInterfaceItemIdentifier position{"Position"};
inline constexpr UserInterfaceItemIdentifier prefix{"Prefix"};
inline constexpr UserInterfaceItemIdentifier schedule{"Schedule"};
inline constexpr UserInterfaceItemIdentifier snippets{"Snippets"};
inline constexpr UserInterfaceItemIdentifier status{"Status"};
inline constexpr UserInterfaceItemIdentifier string{"String"};
inline constexpr UserInterfaceItemIdentifier summary{"Summary"};
inline constexpr UserInterfaceItemIdentifier user{"User"};
inline constexpr UserInterfaceItemIdentifier value{"Value"};
} // namespace Column

/// Of the list of times at which jobs run.
namespace ScheduleColumn {
inline constexpr UserInterfaceItemIdentifier repeatInterval{"RepeatInterval"};
inline constexpr UserInterfaceItemIdentifier everyHour{"EveryHour"};
inline constexpr UserInterfaceItemIdentifier everyDay{"EveryDay"};
inline constexpr UserInterfaceItemIdentifier dayOfWeek{"DayOfWeek"};
inline constexpr UserInterfaceItemIdentifier dayOfMonth{"DayOfMonth"};
inline constexpr UserInterfaceItemIdentifier dayOfYear{"DayOfYear"};
} // namespace ScheduleColumn
} // namespace UserInterfaceItem

} // namespace CorbelKit::Const

// clang-format on
