#pragma once

namespace orvane {

/// Counts what is taken from the heap between these two calls; the second gives the number.
void StartCountingAllocations();
int StopCountingAllocations();

}  // namespace orvane
