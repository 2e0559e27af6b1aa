#pragma once

namespace orvane {

/// Decides, before the first window, how the process stands to the screen's resolution. There are pictures of
/// the face for 96 and for 120 pixels per inch; on a screen of exactly 120 the program asks for whole pixels
/// and uses the latter. On every other one it stays unaware, and the system enlarges window, face and
/// controls together.
/// @return the pixels per inch that the program draws for, 96 or 120. The system is not asked again: some
/// tell an unaware process the true figure, for which there is no face.
int DecideDpiAwareness();

}  // namespace orvane
