#pragma once

#include "platform/win32/windows_api.h"

#include <vector>

namespace orvane {

/// A window that can paint a part of itself without being asked by the system.
struct PaintTarget {
  virtual ~PaintTarget() = default;
  /// Paints `area` (pixels of the window), and what is owed besides stays owed.
  virtual void PaintNow(const RECT& area) = 0;
  /// Leaves it to the system to ask for `area` when nothing else is to be done.
  virtual void PaintLater(const RECT& area) = 0;
};

/// Areas that are to be painted again. A line changes dozens of segments and a handful of windows, and in
/// Wine each request to the system and each answer to it costs several trips to its server: more than all
/// else that a reading costs. So what is asked for while a `Gathering` lives is merged, one rectangle for
/// each window, and painted at its end without the detour. On a line so fast that no screen could show every
/// change the system is asked instead, which merges further. What is asked for outside goes to the system at
/// once.
class PaintRequests {
 public:
  /// Nothing may wait for events during its life: what was asked for would not be seen meanwhile.
  class Gathering {
   public:
    explicit Gathering(PaintRequests& requests) : requests_(requests) { ++requests_.gathering_; }
    ~Gathering() {
      if (--requests_.gathering_ == 0) requests_.HandOver();
    }
    Gathering(const Gathering&) = delete;
    Gathering& operator=(const Gathering&) = delete;

   private:
    PaintRequests& requests_;
  };

  /// @param area pixels of the window
  void Ask(PaintTarget& window, const RECT& area);
  /// The window is about to go.
  void Forget(const PaintTarget& window);

 private:
  struct Request {
    PaintTarget* window;
    RECT area;
  };
  void HandOver();

  std::vector<Request>
      requests_;  // as many as there are windows that change: few enough to be looked through
  DWORD painted_at_ = 0;
  int gathering_ = 0;
};

}  // namespace orvane
