// What the user's answers to a notification lead to, through a real bus and the installed main
// application.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/MainApplication.h"

using namespace TestSupport;
using testing::HasSubstr;

namespace {

/// An agent on a bus with a notification service, in a home where the main application is
/// installed: each of its starts is a line in a file.
class Answer : public AgentTest {
protected:
    void installApplication(const std::string& extraOfEntry = "") const {
        writeFile(program,
                  "#!/bin/sh\n"
                  "{ echo \"$# arguments: $1;\""
                  " \"$XDG_ACTIVATION_TOKEN, $DESKTOP_STARTUP_ID;\""
                  " \"$NOTIFY_SOCKET\"\n"
                  "  ls /proc/$$/fd >\"$0.fd\"\n" // a pipe would be seen
                  "  grep '^[3-9]$' \"$0.fd\"\n"
                  "  grep SigIgn /proc/$$/status | tail -c 8; } >>\"$0.starts\"\n");
        fs::permissions(program, fs::perms::owner_all);
        installMainApplication(trial.home(), "Name=Vesper Pro\nExec=" + program.string() + " %u\n" +
                                                 extraOfEntry);
    }

    void start(const BusDaemon& session) {
        trial.environment["DBUS_SESSION_BUS_ADDRESS"] = session.address();
        trial.environment["LD_PRELOAD"] = "libnss_wrapper.so:" CORBEL_SYSTEM_LOG_RECORDER;
        trial.environment["CORBEL_SYSTEM_LOG"] = log;
        ASSERT_TRUE(trial.start());
    }

    std::string link(const std::string& name) const {
        const ChildProcess encoder({"sh", "-c", "printf %s \"$0\" | base64 --wrap=0", job(name)});
        return "vesperpro10joburl://" + encoder.readAll();
    }

    std::string starts() const { return contentOf(program.string() + ".starts"); }

    void expectStarts(const std::string& lines) const {
        waitUntil([&] { return starts().size() >= lines.size(); });
        EXPECT_EQ(starts().substr(0, lines.size()), lines);
    }

    const fs::path program = trial.home() / "application";
    const fs::path log = trial.home() / "system.log";
};

TEST_F(Answer, ShowOpensTheJobOrTheApplicationAndAnyOtherAnswerNothing) {
    const BusDaemon bus;
    NotificationService service(bus.address());
    NotificationService stranger(bus.address(), {}, "org.example.Stranger");
    installApplication();
    start(bus);
    const std::string noDescriptorNoSignal = "\n0000000\n";

    const std::string name = "\u00FF~~~???.plist"; // a "+" and a "/" in the link
    service.setManner(NotificationService::Manner::holds);
    auto added = shown(service, name);
    EXPECT_FALSE(trial.nextLine(std::chrono::seconds(6))) << "a late answer is no refusal";
    service.setManner(NotificationService::Manner::answers);
    added.number = 1;
    service.emitActivationToken(added.number, "token-1");
    service.emitActionInvoked(added.number, "ShowAction"); // before its number is known
    service.answerHeld();
    const auto start = "1 arguments: " + link(name) + "; token-1, token-1; " + noDescriptorNoSignal;
    expectStarts(start);
    stranger.emitActionInvoked(added.number, "ShowAction");
    service.emitActionInvoked(added.number + 1000, "ShowAction");
    service.emitActivationToken(added.number + 1000, "token of another");
    service.emitActionInvoked(added.number, "default");
    EXPECT_TRUE(waitUntil([&] { return !contentOf(log).empty(); }));

    fs::remove(job(name));
    const auto deleted = next(service);
    service.emitNotificationClosed(deleted.number, 2); // the answer comes after all
    service.emitActionInvoked(deleted.number, "ShowAction");
    expectStarts(start + "0 arguments: ; , ; " + noDescriptorNoSignal);
    EXPECT_EQ(contentOf(log), "vesper-pro-agent: Unknown action\n");

    service.vanish();
    service.comeBack({"actions"});
    service.emitActionInvoked(added.number, "ShowAction"); // the number of another owner's
    service.emitActionInvoked(shown(service, "next.plist").number, "ShowAction");
    EXPECT_TRUE(waitUntil([&] { return starts().find(link("next.plist")) != std::string::npos; }));
    EXPECT_EQ(starts().find(link(name), start.size()), std::string::npos);
}

TEST_F(Answer, SaysInTheLogWhatNothingOpens) {
    const BusDaemon bus;
    NotificationService service(bus.address());
    start(bus);
    service.emitActionInvoked(shown(service, "x").number, "ShowAction");
    const auto line = "vesper-pro-agent: Cannot open " + link("x") + ": ";
    EXPECT_TRUE(waitUntil([&] { return contentOf(log).starts_with(line); })) << contentOf(log);
}

TEST_F(Answer, IsNotHeldUpByAPass) {
    const BusDaemon bus;
    NotificationService service(bus.address());
    installApplication();
    start(bus);
    const auto added = shown(service, "x.plist");
    writeFile(trial.elsewhere() / "sparse", "");
    fs::resize_file(trial.elsewhere() / "sparse", std::uintmax_t{1} << 40);
    fs::rename(trial.elsewhere() / "sparse", job("sparse"));
    const auto isBeingRead = [this] {
        return std::ranges::any_of(
            fs::directory_iterator("/proc/" + std::to_string(trial.process()) + "/fd"),
            [this](const auto& descriptor) {
                std::error_code closed;
                return fs::read_symlink(descriptor, closed) == job("sparse");
            });
    };
    ASSERT_TRUE(waitUntil(isBeingRead));
    service.emitActionInvoked(added.number, "ShowAction");
    expectStarts("1 arguments: " + link("x.plist"));
    EXPECT_TRUE(isBeingRead());
    expectToEnd();
}

TEST_F(Answer, AsksTheBusForAnApplicationThatWantsIt) {
    const BusDaemon bus(
        BusDaemon::ActivatableServices{{"com.tarnwell.VesperPro10", "/bin/sleep 20"}});
    const ChildProcess monitor(
        {"dbus-monitor", "--address", bus.address(), "interface='org.freedesktop.Application'"});
    const auto skipTo = [&monitor](const std::string& text) {
        std::string line = monitor.readLine();
        while (!line.empty() && line.find(text) == std::string::npos)
            line = monitor.readLine();
        return line;
    };
    ASSERT_FALSE(skipTo("NameLost").empty());
    NotificationService service(bus.address());
    installApplication("DBusActivatable=true\nStartupNotify=true\n");
    start(bus);

    const auto added = shown(service, "x.plist");
    service.emitActivationToken(added.number, "token-1");
    service.emitActionInvoked(added.number, "ShowAction");
    EXPECT_THAT(skipTo("method call"), HasSubstr("member=Open"));
    EXPECT_THAT(skipTo("vesperpro10joburl"), HasSubstr("\"" + link("x.plist") + "\""));
    EXPECT_THAT(skipTo("token-1"), HasSubstr("\"token-1\""));
    EXPECT_EQ(starts(), "");
}

} // namespace
