#pragma once

#include "Platform/Application.h"

namespace Vesper_Pro_Agent {

/// Starts and ends the agent's work. Main thread only.
class AppDelegate final : public Platform::ApplicationDelegate {
public:
    /// Removes the traces of older agents, to completion, and then starts the watch. Returns at
    /// once, so that the process can be asked to end meanwhile.
    void applicationDidFinishLaunching() override;

    /// Ends the watch. Nothing is saved: the next launch takes the folders as it finds them.
    void applicationWillTerminate() override;
};

} // namespace Vesper_Pro_Agent
