#include "tests/support/face.h"

namespace orvane {
namespace {

// Below "Program Files", on a write-protected stick: the operator is told at the start, not when it is too
// late.
TEST(Saving, AFolderThatCannotBeWrittenIsToldOnceAtTheStart) {
  const std::string kept = "[USER-SETTINGS]\r\nF-PWR-INDEX=3\r\n";
  for (const bool there : {true, false}) {
    Program program(MeterAt(38400));
    if (there) program.PutSettings(kept);
    program.files.SetReadOnly(true);
    ASSERT_TRUE(program.Start());
    EXPECT_EQ(program.Status(), "Settings cannot be saved here") << there;
    EXPECT_EQ(program.orvane->Meter().lblShowStatus->ForeColor(), 255U);
    EXPECT_EQ(program.orvane->Settings().FPwrIndex, there ? 3 : 8);

    program.line.Meter.SetPower(100, 0);
    program.RunFor(3000);
    EXPECT_EQ(program.Fwd(), "100") << "it goes on";
    EXPECT_EQ(program.Status(), "Settings cannot be saved here") << "what the search says waits";
    program.RunFor(10000);
    EXPECT_EQ(program.Status(), "");
    EXPECT_TRUE(program.Close());
    EXPECT_TRUE(program.desktop.boxes.empty());
    EXPECT_EQ(program.SettingsText(), there ? kept : "(no file)");
  }
}

}  // namespace
}  // namespace orvane
