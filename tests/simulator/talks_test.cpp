// Talks with the simulated meter, as data files:
//   > TEXT       a command with its frame         bytes BYTES  bytes to the meter as they are
//   < TEXT       the next line of the meter       silent MS    time in which nothing comes from it
//   wait MS      time passes, what comes is lost  anew         another meter, as it leaves the factory
// Everything else is a command of its console. Each is told twice, with the bytes whole and one by one.
#include "simulator/console.h"
#include "tests/simulator/virtual_line.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>

namespace orvane::sim {
namespace {

class Talk {
 public:
  explicit Talk(bool torn) : torn_(torn) {}

  void Take(const std::string& text, const std::string& where) {
    const auto blank = std::min(text.find(' '), text.size());
    const std::string verb = text.substr(0, blank);
    const std::string rest = text.substr(std::min(blank + 1, text.size()));
    if (verb.empty() || verb == "#") return;
    if (verb == "anew") {
      *this = Talk(torn_);
    } else if (verb == ">") {
      Send(CommandFrame(Unescaped(rest)));
    } else if (verb == "bytes") {
      Send(Unescaped(rest));
    } else if (verb == "<") {
      EXPECT_EQ(Escaped(Next()), Escaped(MessageFrame(Unescaped(rest)))) << where;
    } else if (verb == "silent") {
      EXPECT_EQ(Escaped(Pass(std::stoi(rest))), "") << where;
    } else if (verb == "wait") {
      Pass(std::stoi(rest));
    } else {
      EXPECT_EQ(Console(line_->Meter).Execute(text), "ok") << where;
    }
  }

 private:
  void Send(const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size(); at += torn_ ? 1 : bytes.size())
      line_->Meter.Receive(torn_ ? bytes.substr(at, 1) : bytes, line_->Now);
  }
  std::string Next() {
    for (int i = 0; i < 250 && heard_.find('\n') == std::string::npos; ++i)
      heard_ += line_->Until(line_->Now + 10);
    const std::string next = heard_.substr(0, heard_.find('\n') + 1);
    heard_.erase(0, next.size());
    return next;
  }
  std::string Pass(int ms) { return std::exchange(heard_, {}) + line_->Until(line_->Now + ms); }

  bool torn_;
  std::unique_ptr<VirtualLine> line_ = std::make_unique<VirtualLine>();
  std::string heard_;
};

TEST(Meter, AnswersAsItsTalksSay) {
  int talks = 0;
  for (const auto& file : std::filesystem::directory_iterator(ORVANE_TEST_DATA)) {
    ++talks;
    for (const bool torn : {false, true}) {
      std::ifstream lines(file.path());
      Talk talk(torn);
      int number = 0;
      for (std::string text; std::getline(lines, text);)
        talk.Take(text, file.path().filename().string() + ", line " + std::to_string(++number));
    }
  }
  EXPECT_GE(talks, 4);
}

// Frames taken from a real line, so that this arithmetic has a witness outside itself.
TEST(Meter, FramesAreThoseOfARealLine) {
  for (const auto& [command, frame] : {std::pair{"D1", "\x02\x44\x31\x03\x43\x30\r"},
                                       {"v?", "\x02\x76\x3F\x03\x42\x42\r"},
                                       {"A", "\x02\x41\x03\x38\x46\r"}})
    EXPECT_EQ(CommandFrame(command), frame);
}

}  // namespace
}  // namespace orvane::sim
