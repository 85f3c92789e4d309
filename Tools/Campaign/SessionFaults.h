#pragma once

namespace Campaign {

class FaultTrial;

/// What the desktop around the agent can do to it, a number of times.
namespace SessionFaults {

void busEnds(FaultTrial& trial, int times);
void serviceGoesAndComes(FaultTrial& trial, int times);
void serviceHangs(FaultTrial& trial, int times);
void serviceFloodsAndLies(FaultTrial& trial, int times);
void displayHangsAndGoes(FaultTrial& trial, int times);
void outputIsFull(FaultTrial& trial, int times);

} // namespace SessionFaults
} // namespace Campaign
