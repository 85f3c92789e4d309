// What job files of every kind are understood to say.

#include "Tests/Support/Testing.h"
#include "Tools/JobLink/Core/JobWording.h"

namespace {

using namespace std::string_view_literals;
using namespace TestSupport;

/// As one text: title, what is run, when, and whether it is turned off.
std::string described(const std::string& path, std::string_view content) {
    const fs::path file(path);
    const auto description = JobLink::describeJob(
        {.folder = folderURL(file.parent_path()), .name = file.filename()}, bytesOf(content));
    std::string text = description.title + '|';
    for (const auto& run : description.runs)
        text += run + ';';
    text += '|' + JobLink::startsText(description);
    return text + (description.isTurnedOff ? "|off" : "");
}

TEST(JobDescription, SaysWhatAndWhenInEveryDialect) {
    const EnvironmentVariable language("LC_ALL", "C");

    struct Case {
        std::string path;
        std::string_view content;
        std::string expected;
    };

    const Case cases[] = {
        {"/L/LaunchAgents/a.plist",
         R"({ Label = a; ProgramArguments = ("/bin/sh", "-c", "a b"); StartInterval = "x"; })",
         R"(|/bin/sh -c "a b";|Not by itself)"},
        {"/L/LaunchAgents/b.plist",
         "<plist><dict><key>Program</key><string>/bin/b</string><key>ProgramArguments</"
         "key><array><string>x"
         "</string><string>-v</string></array><key>RunAtLoad</key><true/><key>KeepAlive</key><dict/"
         ">"
         "<key>StartInterval</key><integer>60</integer><key>StartCalendarInterval</"
         "key><array><dict>"
         "<key>Hour</key><integer>3</integer></dict><dict/></array><key>WatchPaths</"
         "key><array><string>/w"
         "</string></array><key>StartOnMount</key><true/><key>MachServices</key><dict><key>m</"
         "key><true/>"
         "</dict><key>Disabled</key><true/></dict></plist>",
         "|/bin/b -v;|When it is loaded, Whenever it ends, Every 60 seconds, By calendar: * 3 * * "
         "*, "
         "By calendar: * * * * *, When /w changes, When a disk is mounted, On demand: m|off"},
        {"/L/PrivilegedHelperTools/tool",
         "\x7F"
         "ELF",
         "||Not known"},
        {"/x/autostart/c.desktop",
         "[Other]\nExec=no\n[Desktop Entry]\nName=C\nName[pt]=Cê\nExec=c "
         "%u\nOnlyShowIn=GNOME;KDE;\n"
         "TryExec=/bin/c\nNotShowIn=\n",
         "C|c %u;|At login, Only in GNOME, KDE, Only if there is /bin/c"},
        {"/x/autostart/d.desktop", "[Desktop Entry]\r\nExec = d\r\nHidden=true\r\n",
         "|d;|At login|off"},
        {"/x/autostart/e.desktop",
         "[Desktop Entry]\nX-GNOME-Autostart-enabled=false\nHidden=Yes\n[Desktop "
         "Entry]x]\nHidden=true\n",
         "||At login"},
        {"/x/autostart/m.desktop",
         "[Desktop Entry]\nExec=a\n# c\rExec=x\r#\0Hidden=1\n[Desktop Entry]\nExec=b\rc\nExec="sv,
         "|a;x;b;b\\rc;|At login"},
        {"/x/autostart/n.desktop", "[Desktop Entry]\nX=\\\nHidden=true\n", "||At login"},
        {"/s/system/f.service",
         "[Unit]\nDescription=F\n[Service]\nExecStart=/no\nExecStart=\nExecStart=/f \\\n# "
         "comment\n  -v\n"
         "ExecStartPre=/p\\\\\nBusName=org.f\n[Install]\nWantedBy=multi-user.target\n",
         "F|ExecStartPre=/p\\\\;/f  -v;|On demand: org.f, With multi-user.target"},
        {"/s/system/g.timer", "[Timer]\nOnCalendar=daily\nOnBootSec=5min\n",
         "|g.service;|By calendar: daily, By timer: OnBootSec=5min"},
        {"/s/system/h.path", "[Path]\nPathChanged=/w\nUnit=x.service\nUnit=y.service\n",
         "|x.service;y.service;|When /w changes"},
        {"/s/system/i.socket", "\xEF\xBB\xBF[Socket]\nListenStream=80\nExecStopPre=/s\n",
         "|i.service;ExecStopPre=/s;|On demand: 80"},
        {"/e/cron.d/j",
         "# c\nSHELL = /bin/sh\n*/5 * * * * root a  b=c\n@reboot\tnobody d\n1 2 3 4 5 root\n",
         "|root: a  b=c;nobody: d;|By calendar: */5 * * * *, When the system starts"},
        {"/e/init.d/k",
         "#!/bin/sh\n# Default-Start: 9\n### BEGIN INIT INFO\n# Default-Start:  2 3\n"
         "# Short-Description: K\n### END INIT INFO\n# Default-Start: 8\n",
         "K|/e/init.d/k;|With 2 3"},
        {"/x/autostart/l.desktop", "[Desktop Entry]\nExec=a\x1B[2J\xE2\x80\xAE\xFF\n",
         "|a\\u{1B}[2J\\u{202E}\xEF\xBF\xBD;|At login"},
    };
    for (const auto& [path, content, expected] : cases)
        EXPECT_EQ(described(path, content), expected) << path;
}

// Whatever the dialect, the window's thread has little to show.
TEST(JobDescription, IsBoundedWhateverTheFileHolds) {
    std::string lines = "[Service]\n[Timer]\n";
    for (int line = 0; line < 20'000; ++line)
        lines += "ExecStart=" + std::string(40, 'x') + "\n* * * * * root y\nOnCalendar=z\n";
    EXPECT_THAT(described("/e/cron.d/a", lines),
                testing::AllOf(testing::HasSubstr(";\u2026;|"), testing::EndsWith(", \u2026")));
    EXPECT_THAT(described("/s/a.timer", lines + "Unit=b.path"), testing::StartsWith("|b.path;|"));
    for (const auto* const path :
         {"/e/cron.d/a", "/s/a.service", "/s/a.timer", "/x/a.desktop", "/e/init.d/a", "/L/a"}) {
        for (const auto& content : {lines, std::string(JobLink::largestJob, '\\'),
                                    "[Service]\nExecStart=" + std::string(1 << 20, 'x')})
            EXPECT_LT(described(path, content).size(), 24U * 2 * 500);
    }
}

} // namespace
