#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

struct Update : LinkTest {
  Update() { port.Open(); }
  ParameterRecord pending, current;
  void Apply() { link.UpdateMeterParameters(pending, current); }
};

TEST_F(Update, NothingChangedSendsNothing) {
  Apply();
  EXPECT_TRUE(port.Writes().empty());
  EXPECT_EQ(events.log, (Texts{"hourglass", "status Updating Meter Paramaters", "arrow",
                               "status Paramater Update Complete", "message Orvane"}));
}

TEST_F(Update, OneChangeIsOneCommandAndItsQuery) {
  pending.ReflectedTrim = -3;
  Apply();
  link.ChangeSetting('T', -20);
  ASSERT_EQ(Commands(), (Texts{"t-3", "t?", "T-20", "T?"}));
  EXPECT_EQ(port.Writes()[1].at - port.Writes()[0].at, 126);
  EXPECT_GE(port.Writes()[2].at - port.Writes()[1].at, 126);
}

TEST_F(Update, AllInTheirOrder) {
  pending = {1, 2, 1, 1, 3, 2, 7, 4, 3, CallText("CQ 10"), true};
  Apply();
  EXPECT_EQ(Commands(), (Texts{"CCQ 1\xD8", "C?", "T1", "T?", "t2", "t?", "P1", "P?", "S1", "S?",
                               "b3",        "b?", "I2", "I?", "l7", "l?", "V4", "V?", "M3", "M?"}));
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

TEST_F(Update, TheAnswersAreInTheStateAtTheEnd) {
  replies = {{"b?", "b1"}, {"S?", "S1"}, {"C?", "CDL0X"}};
  pending.RangeScale = 3;  // the meter takes 1
  pending.DisplayMessage = 1;
  pending.CallMessageEdited = true;
  Apply();
  EXPECT_EQ(link.State().ParamB2, 1);
  EXPECT_EQ(events.log.back(), "message DL\xD8X");
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
