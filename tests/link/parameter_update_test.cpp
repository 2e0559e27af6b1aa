#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

struct Update : LinkTest {
  Update() { port.Open(); }
  ParameterRecord pending, current;
  void Apply() { link.UpdateMeterParameters(pending, current); }
};

TEST_F(Update, TellsThatItGoesOnAndThatItEnded) {
  Apply();
  EXPECT_EQ(events.log, (Texts{"hourglass", "status Updating Meter Paramaters", "arrow",
                               "status Paramater Update Complete", "message Orvane"}));
}

TEST_F(Update, CallMessageIsCutTo16Characters) {
  pending.CallMessage.Set("12345678901234567");
  Apply();
  EXPECT_TRUE(port.Writes().empty()) << "not edited";
  pending.CallMessageEdited = true;
  Apply();
  link.SendCallMessage("0 ");
  EXPECT_EQ(Commands(), (Texts{"C123456789\xD8" + std::string("123456"), "C?", "C\xD8", "C?"}));
}

TEST_F(Update, ShownMessage) {
  link.ShowCallMessage("A0", true);
  link.ShowCallMessage("A0", false);  // no message of the meter yet
  Feed(Line("C00  "));
  link.ShowCallMessage("A0", false);
  EXPECT_EQ(link.State().MeterCallText.Text(), "\xD8\xD8");  // kept
  EXPECT_EQ(events.log, (Texts{"message A\xD8", "message A0", "message \xD8\xD8"}));
}

TEST_F(Update, CurrentParametersFollowTheState) {
  Feed(Line("U-20,20") + Line("T5") + Line("t-6") + Line("P1") + Line("S1") + Line("b2") + Line("I4") +
       Line("l7") + Line("V3") + Line("M2") + Line("CCALL"));
  current = link.CurrentParameters();
  EXPECT_EQ(current.Intensity, 3);
  pending = current;
  Apply();
  EXPECT_TRUE(port.Writes().empty());
  pending = {0, 0, 0, 0, 0, 0, 0, 0, 0, CallText(), false};
  Apply();
  EXPECT_EQ(port.Writes().size(), 18U);
  EXPECT_EQ(current.CallMessage.Text(), "CALL");
  Feed(Line("I1"));
  EXPECT_EQ(link.CurrentParameters().Intensity, 1);
}

}  // namespace
}  // namespace orvane
