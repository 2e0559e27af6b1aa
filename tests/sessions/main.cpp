// test_sessions                       checks all sessions, each in all ways of arrival
// test_sessions view NAME...          a session with what the program showed; ! marks what was not expected
// test_sessions rebuild NAME...       puts what the program showed into the file, for a person to read the
// difference
#include "tests/sessions/player.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <stdexcept>

namespace orvane {
namespace {

const char* const kEnding = ".session";

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const auto& file : std::filesystem::directory_iterator(ORVANE_TEST_DATA)) {
    if (file.path().extension() == kEnding) names.push_back(file.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::filesystem::path PathOf(const std::string& name) {
  return std::filesystem::path(ORVANE_TEST_DATA) / (name + kEnding);
}

std::vector<std::string> LinesOf(const std::string& name) {
  std::ifstream file(PathOf(name));
  if (!file) throw std::invalid_argument("no session " + name);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    lines.push_back(line);
  return lines;
}

// The session with the results that the program gave in place of those in the file.
std::vector<std::string> WithResults(const std::vector<Played>& played) {
  std::vector<std::string> lines;
  for (const Played& step : played) {
    if (step.result) continue;
    lines.push_back(step.line);
    lines.insert(lines.end(), step.changed.begin(), step.changed.end());
  }
  return lines;
}

std::string Text(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines)
    text += line + "\n";
  return text;
}

class Session : public testing::TestWithParam<std::string> {};

TEST_P(Session, ShowsTheSameHoweverItsBytesComeIn) {
  const auto lines = LinesOf(GetParam());
  ASSERT_NE(std::find_if(lines.begin(), lines.end(), [](const auto& line) { return line.starts_with("="); }),
            lines.end())
      << "nothing is expected";
  for (const auto& [arrival, name] : kArrivals)
    EXPECT_EQ(Text(WithResults(Play(lines, arrival))), Text(lines)) << name;
}

INSTANTIATE_TEST_SUITE_P(All, Session, testing::ValuesIn(Names()), [](const auto& file) {
  std::string name = file.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

TEST(Sessions, AreThereAndTheirLanguageIsChecked) {
  EXPECT_GE(Names().size(), 60U);
  for (const char* wrong : {"begin", "wait x", "meter fly", "port up", "line up"})
    EXPECT_THROW(Play({"start", wrong}, Arrival::kWhole), std::invalid_argument) << wrong;
  EXPECT_THROW(Play({"> V1", "start"}, Arrival::kWhole), std::invalid_argument);
}

void View(const std::string& name) {
  const auto lines = LinesOf(name);
  std::cout << "--- " << name << "\n";
  const auto played = Play(lines, Arrival::kWhole);
  for (const Played& step : played) {
    if (!step.result) std::cout << step.line << "\n";
    for (const auto& [field, value] : step.all) {
      if (!value.empty())
        std::cout << "      " << field << std::string(8 - field.size(), ' ') << value << "\n";
    }
  }
  const auto shown = WithResults(played);
  if (shown == lines) return;
  std::cout << "! not as the file has it; what the program gave:\n" << Text(shown);
}

void Rebuild(const std::string& name) {
  const auto lines = LinesOf(name);
  const auto shown = WithResults(Play(lines, Arrival::kWhole));
  for (const auto& [arrival, way] : kArrivals) {
    if (WithResults(Play(lines, arrival)) == shown) continue;
    throw std::invalid_argument(name + " shows something else " + way + "; left as it was");
  }
  std::ofstream(PathOf(name)) << Text(shown);
}

int Run(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode.empty()) return RUN_ALL_TESTS();
  if (mode != "view" && mode != "rebuild") throw std::invalid_argument("view or rebuild");
  std::vector<std::string> names(argv + 2, argv + argc);
  if (names.empty()) names = Names();
  for (const std::string& name : names)
    mode == "view" ? View(name) : Rebuild(name);
  return 0;
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  try {
    return orvane::Run(argc, argv);
  } catch (const std::exception& fault) {
    std::cerr << fault.what() << "\n";
    return 2;
  }
}
