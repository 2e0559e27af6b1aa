#include "platform/headless/desktop.h"

#include "base/runtime_error.h"
#include "platform/headless/panel_controls.h"
#include "platform/modal_count.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// Ticks for ever, each tick one interval after the one before, as the system's timers do.
class HeadlessTimer : public TimerHandle {
 public:
  HeadlessTimer(VirtualTime& time, int ms, std::function<void()> tick)
      : time_(time), ms_(ms), tick_(std::make_shared<std::function<void()>>(std::move(tick))) {
    Arm();
  }
  ~HeadlessTimer() override { time_.Cancel(next_); }
  HeadlessTimer(const HeadlessTimer&) = delete;
  HeadlessTimer& operator=(const HeadlessTimer&) = delete;

 private:
  void Arm() {
    next_ = time_.Post(EventKind::kTimer, ms_, [this] {
      const auto tick = tick_;  // the tick may destroy this timer
      Arm();
      (*tick)();
    });
  }
  VirtualTime& time_;
  int ms_;
  std::shared_ptr<std::function<void()>> tick_;
  VirtualTime::EventId next_;
};

HeadlessWindow* FindBelow(HeadlessWindow& window, std::string_view text) {
  if (window.Text() == text) return &window;
  for (HeadlessWindow* child : window.Children()) {
    if (HeadlessWindow* found = FindBelow(*child, text)) return found;
  }
  return nullptr;
}

}  // namespace

HeadlessWindow::~HeadlessWindow() {
  HeadlessWindow& root = Root();
  if (root.focus_inside_ == this) root.focus_inside_ = nullptr;
  if (container_ != nullptr) std::erase(container_->children_, this);
  for (HeadlessWindow* child : children_)
    child->container_ = nullptr;
}

void HeadlessWindow::Mouse(MouseAction action, int button) {
  client_.OnMouse({action, button, {bounds_.width / 2, bounds_.height / 2}});
}

void HeadlessWindow::Click(int button) {
  Mouse(MouseAction::kDown, button);
  Mouse(MouseAction::kUp, button);
}

bool HeadlessWindow::Press(Key key) {
  const bool taken = client_.OnKey({key, true});
  client_.OnKey({key, false});
  return taken;
}

// As the system tells it: the second press of a double click is the double click itself.
void HeadlessWindow::DoubleClick() {
  Click();
  Mouse(MouseAction::kDoubleClick, kLeftButton);
  Mouse(MouseAction::kUp, kLeftButton);
}

HeadlessWindow& HeadlessWindow::Root() {
  HeadlessWindow* root = this;
  while (root->container_ != nullptr)
    root = root->container_;
  return *root;
}

void HeadlessWindow::TakeFocus() {
  HeadlessWindow& root = Root();
  HeadlessWindow* before = std::exchange(root.focus_inside_, &root == this ? nullptr : this);
  if (before == this) return;
  if (before != nullptr) before->Focus(false);
  Focus(true);
}

void HeadlessWindow::PutContainer(HeadlessWindow& container) {
  if (container_ != nullptr) std::erase(container_->children_, this);
  container_ = &container;
  container.children_.push_back(this);
}

HeadlessTopWindow::HeadlessTopWindow(HeadlessDesktop& desktop, TopWindowClient& client, Size size,
                                     WindowLook look)
    : HeadlessWindow(client, nullptr, {0, 0, size.width, size.height}), desktop_(desktop), client_(client) {
  PutVisible(false);
  (look == WindowLook::kFace ? desktop_.main_ : desktop_.dialog_) = this;
}

HeadlessTopWindow::~HeadlessTopWindow() {
  (desktop_.main_ == this ? desktop_.main_ : desktop_.dialog_) = nullptr;
}

HeadlessWindow* HeadlessTopWindow::Find(std::string_view text) {
  return FindBelow(*this, text);
}

HeadlessDesktop::HeadlessDesktop(VirtualTime& time)
    : time_(time), panels_(std::make_unique<HeadlessPanels>()) {}

HeadlessDesktop::~HeadlessDesktop() = default;

PanelControls& HeadlessDesktop::Panels() {
  return *panels_;
}

std::unique_ptr<TopWindow> HeadlessDesktop::CreateTopWindow(TopWindowClient& client, std::string_view caption,
                                                            Size size, WindowLook look) {
  auto window = std::make_unique<HeadlessTopWindow>(*this, client, size, look);
  window->SetText(caption);
  return window;
}

std::unique_ptr<Widget> HeadlessDesktop::CreateChild(Widget& container, WidgetClient& client,
                                                     const Rect& bounds) {
  return std::make_unique<HeadlessControl<Widget>>(client, &dynamic_cast<HeadlessWindow&>(container), bounds);
}

std::unique_ptr<TimerHandle> HeadlessDesktop::StartTimer(int milliseconds, std::function<void()> tick) {
  return std::make_unique<HeadlessTimer>(time_, milliseconds, std::move(tick));
}

BoxAnswer HeadlessDesktop::ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) {
  const ModalCount open(modal_loops_);
  boxes.push_back({std::string(text), std::string(title), style});
  if (on_box) on_box(ShownBox(boxes.back()));
  if (box_ms > 0) time_.RunFor(box_ms);
  if (answers.empty()) return BoxAnswer::kOk;
  const BoxAnswer answer = answers.front();
  answers.pop_front();
  return answer;
}

int HeadlessDesktop::ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) {
  const ModalCount open(modal_loops_);
  menu_at = at;
  menus.push_back(items);
  if (menu_ms > 0) time_.RunFor(menu_ms);
  if (choices.empty()) return 0;
  const int choice = choices.front();
  choices.pop_front();
  return choice;
}

Picture HeadlessDesktop::LoadPicture(const std::string& path) {
  for (const auto& [end, picture] : pictures) {
    if (path.ends_with(end) && picture) return picture;
  }
  throw RuntimeError(Fault::kInvalidPicture, "Loading " + path);
}

// Every letter half as wide as the font is high: near enough to tell where a text stands.
Size HeadlessDesktop::MeasureText(std::string_view text, const Font& font) {
  return {static_cast<int>(text.size()) * font.height / 2, font.height};
}

}  // namespace orvane
