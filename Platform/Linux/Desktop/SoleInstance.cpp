#include "Platform/Linux/Desktop/SoleInstance.h"

#include "Platform/Linux/Bus/BusWriter.h"
#include "Platform/Linux/Bus/SharedBus.h"

#include <utility>

namespace Platform {
namespace {

constexpr auto patienceWithBus = std::chrono::milliseconds(500);
constexpr auto patienceWithBusToCome = std::chrono::seconds(150);
constexpr auto patienceWithHolder = std::chrono::seconds(3);

// "process 123 (:1.4)", as far as the bus says so.
std::string describeHolder(const BusReply& owner, const BusReply& process) {
    const auto isThere = [](const BusReply& reply) {
        return reply.outcome == BusReply::Outcome::answered;
    };
    std::string text = "process ";
    text += isThere(process) ? std::to_string(*process.values[0].get<std::int64_t>()) : "unknown";
    if (isThere(owner))
        text += " (" + *owner.values[0].get<std::string>() + ")";
    return text;
}

} // namespace

SoleInstance::SoleInstance(std::string name, Handlers handlers)
    : name_(std::move(name))
    , handlers_(std::move(handlers)) {}

void SoleInstance::claim() {
    const auto queue = DispatchQueue::main();
    queue.asyncAfter(patienceWithBus, [this] {
        if (!isInLine_)
            launch();
    });
    SharedBus::session().whenThere(queue, busDeadlineIn(patienceWithBusToCome),
                                   [this](auto bus) { connect(std::move(bus)); });
}

void SoleInstance::connect(std::shared_ptr<BusConnection> bus) {
    bus_ = std::move(bus);
    if (!bus_) {
        launch();
        return;
    }
    const auto queue = DispatchQueue::main();
    bus_->whenClosed(queue, [this](const auto& /*reason*/) { handlers_.sessionEnded(); });
    nameClaim_ = std::make_unique<BusNameClaim>(*bus_, name_, queue, [this](auto state) {
        if (state == BusNameClaim::State::inLine) {
            waitInLine();
        } else {
            isInLine_ = false;
            launch();
        }
    });
}

// One that was asked to end has the name until it has ended.
void SoleInstance::waitInLine() {
    isInLine_ = true;
    DispatchQueue::main().asyncAfter(patienceWithHolder, [this] {
        if (isInLine_)
            findHolder();
    });
}

void SoleInstance::findHolder() {
    const auto ask = [this](const char* method, const char* type, auto completion) {
        bus_->call(busDriverMethod(method, type), busArguments(name_),
                   busDeadlineIn(patienceWithBus), DispatchQueue::main(), std::move(completion));
    };
    ask("GetNameOwner", "s", [this, ask](const BusReply& owner) {
        ask("GetConnectionUnixProcessID", "u", [this, owner](const BusReply& process) {
            if (isInLine_)
                handlers_.leave(describeHolder(owner, process));
        });
    });
}

void SoleInstance::launch() {
    if (!std::exchange(hasLaunched_, true))
        handlers_.launch();
}

} // namespace Platform
