#pragma once

#include "Platform/Linux/Loops/GObjectPtr.h"

#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// Hears from the bus who has a name. Used on one thread, whose default context brings the news;
/// dropping it, which the news itself may do, ends them.
class NameWatch {
public:
    /// The owner's unique name; empty: nobody has the name.
    using Owner = std::function<void(const std::string& owner)>;

    /// Tells who has the name now, and from then on who comes to have it. Nothing is missed in
    /// between; a thing may be told twice.
    NameWatch(GDBusConnection* connection, const std::string& name, Owner owner);
    ~NameWatch();
    NameWatch(const NameWatch&) = delete;
    NameWatch& operator=(const NameWatch&) = delete;
    NameWatch(NameWatch&&) = delete;
    NameWatch& operator=(NameWatch&&) = delete;

private:
    using Listener = std::shared_ptr<Owner>;
    using WeakListener = std::weak_ptr<Owner>;

    static void hearSignal(GDBusConnection* connection, const char* sender, const char* path,
                           const char* interface, const char* signal, GVariant* arguments,
                           gpointer listener) noexcept;
    static void hearAnswer(GObject* connection, GAsyncResult* result, gpointer listener) noexcept;

    const GObjectPtr<GDBusConnection> connection_;
    const std::string rule_; // of what the bus is to report
    const Listener listener_;
    const guint subscription_;
};

} // namespace Platform
