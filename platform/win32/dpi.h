#pragma once

namespace orvane {

/// Decides, before the first window, how the process stands to the screen's resolution. There are pictures of
/// the face for 96 and for 120 pixels per inch; on a screen of exactly 120 the program asks for whole pixels
/// and uses the latter. On every other one it stays unaware: it is told 96, and the system enlarges window,
/// face and controls together.
void DecideDpiAwareness();

}  // namespace orvane
