#include "Platform/Native/AlertLine.h"

#include "Platform/Native/NativeAlert.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/POSIX/TerminalLine.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

void write(const Alert& alert) {
    std::cerr << terminalLine({alert.messageText, alert.informativeText}, ": ") + '\n';
    std::cerr.clear(); // a terminal that is gone today is no reason to be silent tomorrow
}

// What a window can show: well-formed, and no taller than a screen.
std::string shownText(std::string_view text) {
    constexpr std::size_t most = 1000;
    constexpr std::size_t lineLength = 40;
    std::string shown;
    for (std::size_t used = 0; !text.empty();) {
        used += text.front() == '\n' ? lineLength : 1;
        if (used > most)
            return shown + "…";
        const auto character = UTF8::decodeFirst(text);
        shown += character.wellFormed ? text.substr(0, character.length) : "\uFFFD";
        text.remove_prefix(character.length);
    }
    return shown;
}

Alert shownAlert(const Alert& alert) {
    return {.messageText = shownText(alert.messageText),
            .informativeText = shownText(alert.informativeText),
            .buttonTitle = shownText(alert.buttonTitle),
            .style = alert.style};
}

void runAll(const std::vector<AlertLine::Task>& tasks) {
    for (const auto& task : tasks) {
        if (task)
            task();
    }
}

} // namespace

AlertLine& AlertLine::shared() {
    static const NeverDestroyed<AlertLine> instance;
    return instance.get();
}

void AlertLine::setPresenter(AlertPresenter presenter) {
    const MutexLock lock(mutex_);
    presenter_ = std::move(presenter);
}

void AlertLine::add(const Alert& alert, Task dismissed) {
    {
        const MutexLock lock(mutex_);
        if (!isWritten()) {
            entryOf(alert).dismissed.push_back(std::move(dismissed));
            runBesideMainQueue([this] { showNext(); });
            return;
        }
    }
    write(alert);
    runAll({std::move(dismissed)});
}

void AlertLine::run(const Alert& alert) {
    bool isShown = false;
    {
        const MutexLock lock(mutex_);
        isShown = !isWritten();
        if (isShown && std::exchange(entryOf(alert).isUp, true))
            return;
    }
    isShown ? show(alert) : write(alert);
}

void AlertLine::whenEmpty(Task task) {
    {
        const MutexLock lock(mutex_);
        if (!entries_.empty()) {
            whenEmpty_.push_back(std::move(task));
            return;
        }
    }
    task();
}

void AlertLine::end() {
    Entries waiting;
    Task dismissAll;
    {
        const MutexLock lock(mutex_);
        hasEnded_ = true;
        dismissAll = presenter_.dismissAll;
        whenEmpty_.clear();
        for (auto entry = entries_.begin(); entry != entries_.end();) {
            const auto next = std::next(entry);
            if (!entry->isUp)
                waiting.splice(waiting.end(), entries_, entry);
            entry = next;
        }
    }
    for (const auto& entry : waiting) {
        write(entry.alert);
        runAll(entry.dismissed);
    }
    runAll({std::move(dismissAll)});
}

// Nobody needs the main thread for that.
bool AlertLine::isWritten() const {
    return hasEnded_ || (!presenter_.run && !nativeAlertPresenter().run);
}

AlertLine::Entry& AlertLine::entryOf(const Alert& alert) {
    const auto found = std::ranges::find(entries_, alert, &Entry::alert);
    return found != entries_.end() ? *found : entries_.emplace_back(Entry{.alert = alert});
}

void AlertLine::showNext() {
    std::vector<Task> tasks;
    std::optional<Alert> next;
    {
        const MutexLock lock(mutex_);
        if (std::ranges::any_of(entries_, &Entry::isUp))
            return;
        if (entries_.empty()) {
            tasks = std::exchange(whenEmpty_, {});
        } else {
            entries_.front().isUp = true;
            next = entries_.front().alert;
        }
    }
    if (next)
        show(*next);
    runAll(tasks);
}

void AlertLine::show(const Alert& alert) {
    AlertPresenter presenter;
    {
        const MutexLock lock(mutex_);
        presenter = presenter_.run ? presenter_ : nativeAlertPresenter();
    }
    if (!presenter.run || !presenter.run(shownAlert(alert)))
        write(alert);
    Entries shown;
    {
        const MutexLock lock(mutex_);
        const auto entry = std::ranges::find(entries_, alert, &Entry::alert);
        shown.splice(shown.end(), entries_, entry);
        if (!entries_.empty() || !whenEmpty_.empty())
            runBesideMainQueue([this] { showNext(); });
    }
    runAll(shown.front().dismissed);
}

} // namespace Platform
