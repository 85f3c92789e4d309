#pragma once

#include <functional>

namespace Vesper_Pro_Agent {

/// Switches off the agents of older applications, which would report the same changes once more:
/// clears the "RunAgent" setting of two earlier main applications and removes the legacy agent's
/// job. Runs three tools one after another, at every launch, whatever they find; what they print
/// and how they end is not looked at. Returns at once, since a tool may hang; the completion is
/// called on the main thread when the third has ended.
void removeLegacyAgents(std::function<void()> completion);

} // namespace Vesper_Pro_Agent
