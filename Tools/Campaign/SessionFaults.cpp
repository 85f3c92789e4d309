#include "Tools/Campaign/SessionFaults.h"

#include "Tests/Support/Linux/DesktopSession.h"
#include "Tools/Campaign/FaultTrial.h"

#include <fcntl.h>
#include <unistd.h>

namespace Campaign::SessionFaults {
namespace {

using std::chrono::milliseconds;
using Manner = TestSupport::NotificationService::Manner;

} // namespace

void busEnds(FaultTrial& trial, int times) {
    for (int time = 0; time < times && trial.start(); ++time) {
        trial.desk.bus->end();
        trial.expectEnd(0);
        trial.desk.renewSession();
    }
}

void serviceGoesAndComes(FaultTrial& trial, int times) {
    if (!trial.start())
        return;
    for (int time = 0; time < times; ++time) {
        const auto path = trial.save(trial.desk.trial.userAgents());
        std::this_thread::sleep_for(milliseconds(time * 37 % 1000)); // any moment up to delivery
        trial.desk.service->vanish();
        trial.desk.service->comeBack({"actions"});
        trial.awaitNotified(path);
    }
}

void serviceHangs(FaultTrial& trial, int times) {
    if (!trial.start())
        return;
    for (int time = 0; time < times; ++time) {
        trial.desk.service->setManner(Manner::holds);
        trial.expectNotified();
        trial.desk.service->setManner(Manner::answers);
        trial.expectNotified(); // beside the one that is not answered
        trial.desk.service->answerHeld();
        trial.expectNotified();
    }
    trial.expectEnd();
}

void serviceFloodsAndLies(FaultTrial& trial, int times) {
    if (!trial.start())
        return;
    std::string longText;
    longText.resize(10'000'000, 'x');
    for (int time = 0; time < times; ++time) {
        const auto path = trial.save(trial.desk.trial.userAgents());
        for (std::uint32_t number = 0; number < 2000; ++number) {
            trial.desk.service->emitActionInvoked(1'000'000 + number, "ShowAction");
            trial.desk.service->emitActivationToken(number, "a token of another");
            trial.desk.service->emitNotificationClosed(1'000'000 + number, number);
        }
        trial.desk.service->emitActionInvoked(1, longText);
        trial.desk.service->emitActivationToken(1, longText);
        trial.awaitNotified(path);
    }
    trial.expectEnd();
}

void displayHangsAndGoes(FaultTrial& trial, int times) {
    for (int time = 0; time < times; ++time) {
        TestSupport::DesktopSession session;
        trial.desk.trial.environment["DISPLAY"] = session.display();
        if (!trial.start())
            return;
        session.freeze();
        trial.expectNotified();
        session.thaw();
        trial.expectNotified();
        session.freeze();
        const auto path = trial.save(trial.desk.trial.userAgents());
        session.crash();
        trial.awaitNotified(path);
        trial.expectEnd();
    }
}

void outputIsFull(FaultTrial& trial, int times) {
    for (int time = 0; time < times && trial.start(); ++time) {
        const auto output = "/proc/" + std::to_string(trial.desk.trial.process()) + "/fd/1";
        const int pipe = open(output.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        while (write(pipe, "\n", 1) == 1) {
        }
        close(pipe);
        trial.desk.service->vanish(); // what is changed now has nowhere else to go
        trial.save(trial.desk.trial.userAgents());
        std::this_thread::sleep_for(milliseconds(1500));
        trial.desk.service->comeBack({"actions"});
        const auto name = trial.save(trial.desk.trial.userAgents()).filename().string();
        auto call = trial.desk.service->next(); // and nobody reads the pipe
        while (call && !call->body.ends_with(name))
            call = trial.desk.service->next();
        trial.expect(call.has_value());
        trial.expectEnd();
    }
}

} // namespace Campaign::SessionFaults
