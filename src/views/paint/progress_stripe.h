// ProgressStripe: how far a load is, one pixel high along the window's upper edge. Any thread.
#pragma once

namespace kalmora {

inline constexpr double kStripeFinished = 100;  // wipes the stripe

// fraction: 0 to 1 (values outside count as the nearer bound), or kStripeFinished.
void ProgressStripe(double fraction);
// The darker pair of colours, for updates of the index.
void ProgressStripeDark(double fraction);

}  // namespace kalmora
