#include "tests/support/panels.h"

#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

class ProgramSettings : public ::testing::Test {
 protected:
  void Open() { face.Main().Press(Key::kF3); }
  const ProgramSettingsPanel& Panel() const { return *program.orvane->Panels().ProgramSettings(); }
  HeadlessWindow& Frame() const { return face.Of(Panel().FrameSettings); }
  HeadlessWindow& In(const WindowedControl& group) const { return Face::In(Frame(), group); }
  HeadlessList& Ports() const {
    return PanelWindow<HeadlessList>(In(Panel().FramePort), Panel().cboCommPort);
  }
  HeadlessList& Speeds() const {
    return PanelWindow<HeadlessList>(In(Panel().FramePort), Panel().cboBaudRate);
  }
  HeadlessTextBox& Client() const {
    return PanelWindow<HeadlessTextBox>(In(Panel().FrameClient), Panel().txtClient);
  }
  HeadlessCheckBox& OnTop() const {
    return PanelWindow<HeadlessCheckBox>(In(Panel().FrameOnTop), Panel().chkOnTop);
  }
  void Apply() const { PanelWindow<HeadlessButton>(Frame(), Panel().cmdAction).Push(); }
  std::string ChosenPort() const { return Ports().Items().at(static_cast<std::size_t>(Ports().Selected())); }

  RunningFace running;
  Program& program = running.program;
  Face& face = running.face;
};

TEST_F(ProgramSettings, PortsAreListedByNumberWithTheConfiguredOneAlways) {
  program.ports.ports = {{5, "USB Serial Port"}, {12, ""}};
  ASSERT_TRUE(running.Start());
  Open();
  EXPECT_EQ(Ports().Items(), (Texts{"No port", "COM2", "COM5  USB Serial Port", "COM12"}));
  EXPECT_EQ(ChosenPort(), "COM2") << "open, whatever the system's list says";
  EXPECT_EQ(Speeds().Items(), (Texts{"38400", "19200", "9600"}));
  Ports().Choose(2);
  program.ports.ports = {{7, "Adapter"}};
  face.Main().System().OnDevicesChanged();
  EXPECT_EQ(Ports().Items(), (Texts{"No port", "COM2", "COM5  (not present)", "COM7  Adapter"}));
  EXPECT_EQ(ChosenPort(), "COM5  (not present)") << "the choice stands";
}

TEST_F(ProgramSettings, AnAbsentPortAndAnOddSpeedAreShown) {
  program.port.SetPresent(false);
  ASSERT_TRUE(
      program.files.Replace(program.SettingsPath(), "[METER-SETTINGS]\r\nCOMM-PORT=9\r\nBAUD-RATE=4800\r\n"));
  ASSERT_TRUE(program.Start());
  Open();
  EXPECT_EQ(ChosenPort(), "COM9  (not present)");
  EXPECT_EQ(Speeds().Items().back(), "4800");
  EXPECT_EQ(Speeds().Selected(), 3);
}

TEST_F(ProgramSettings, AnotherPortIsTakenOverAtOnce) {
  program.ports.ports = {{2, ""}, {5, "USB Serial Port"}};
  ASSERT_TRUE(running.Start());
  Open();
  Ports().Choose(2);
  Speeds().Choose(1);
  program.port.ClearWrites();
  Apply();
  EXPECT_FALSE(Panel().Visible());
  EXPECT_EQ(face.Meter().lblPort->Caption(), "5");
  EXPECT_NE(program.SettingsText().find("5"), std::string::npos);
  ASSERT_TRUE(program.RunUntil([&] { return program.orvane->Link().Flags().MeterFound; }, 20000));
  ASSERT_GE(program.port.Writes().size(), 2U);
  EXPECT_EQ(program.port.Writes()[0].port, 2);
  EXPECT_NE(program.port.Writes()[0].bytes.find("D0"), std::string::npos) << "the port that is left stops";
  EXPECT_EQ(program.port.Writes()[1].port, 5);
  EXPECT_EQ(program.port.Writes()[1].settings, "19200,N,8,1");
  EXPECT_TRUE(program.desktop.boxes.empty());
}

TEST_F(ProgramSettings, NothingChangedLeavesTheLinkAlone) {
  ASSERT_TRUE(running.Start());
  Open();
  program.port.ClearWrites();
  Apply();
  program.RunFor(3000);
  EXPECT_TRUE(program.port.Writes().empty());
  EXPECT_TRUE(program.orvane->Link().Flags().MeterFound);
}

TEST_F(ProgramSettings, NoPortEndsTheLinkWithoutABox) {
  ASSERT_TRUE(running.Start());
  Open();
  Ports().Choose(0);
  Apply();
  program.RunFor(20000);
  EXPECT_FALSE(program.port.PortOpen());
  EXPECT_EQ(program.orvane->Settings().CommPort, "0");
  EXPECT_TRUE(program.desktop.boxes.empty());
  EXPECT_EQ(program.Lit(face.Meter().forward), 0) << "old readings are not live";
}

TEST_F(ProgramSettings, TheClientsNameCountsAtEachKey) {
  ASSERT_TRUE(running.Start());
  Open();
  EXPECT_EQ(Client().Text(), "OVClient");
  EXPECT_EQ(Panel().lblClientState.Caption(), "Found: it gets each reading.");
  Client().Paste("");
  EXPECT_EQ(Panel().lblClientState.Caption(), "No client: readings go to no program.");
  Client().Type("Logger ");
  EXPECT_EQ(program.orvane->Settings().ClientApp, "Logger ");
  EXPECT_EQ(Panel().lblClientState.Caption(), "Not kept as it is: outer blanks or quotes.");
  program.clients.caption = "Logger ";
  program.clients.messages.clear();
  program.RunFor(1000);
  EXPECT_FALSE(program.clients.messages.empty());
  PanelWindow<HeadlessButton>(Frame(), Panel().cmdCloseSettings).Push();
  EXPECT_EQ(program.orvane->Settings().ClientApp, "Logger ")
      << "also when the panel is left without applying";
}

// What the box was when it was clicked last counts, false when it never was.
TEST_F(ProgramSettings, StayOnTopCountsByApplyOnly) {
  ASSERT_TRUE(running.Start("FORM-ON-TOP=True\r\n"));
  EXPECT_TRUE(face.Main().TopMost());
  Open();
  EXPECT_TRUE(OnTop().Checked());
  Apply();
  EXPECT_FALSE(program.orvane->Settings().FormOnTop) << "never clicked in this run";
  EXPECT_FALSE(face.Main().TopMost());
  Open();
  OnTop().Toggle();
  EXPECT_FALSE(program.orvane->Settings().FormOnTop);
  EXPECT_TRUE(Frame().Press(Key::kEscape));
  EXPECT_FALSE(program.orvane->Settings().FormOnTop);
  Open();
  Apply();
  EXPECT_TRUE(program.orvane->Settings().FormOnTop) << "the click from before is remembered";
  EXPECT_TRUE(program.Close());
  EXPECT_NE(program.SettingsText().find("FORM-ON-TOP=True"), std::string::npos);
}

TEST_F(ProgramSettings, OnePanelAtATime) {
  ASSERT_TRUE(running.Start());
  Open();
  Frame().Press(Key::kF2);
  face.Main().Press(Key::kF2);
  EXPECT_FALSE(Panel().Visible());
  EXPECT_TRUE(program.orvane->Panels().MeterSetup()->Visible());
  Open();
  EXPECT_TRUE(Panel().Visible());
  EXPECT_FALSE(program.orvane->Panels().MeterSetup()->Visible());
}

TEST_F(ProgramSettings, ASearchThatWasGivenUpIsTakenUpAgain) {
  program.port.SetPresent(false);
  ASSERT_TRUE(program.Start());
  program.RunFor(5000);
  ASSERT_EQ(program.desktop.boxes.size(), 1U) << "no port opens";
  program.port.SetPresent(true);
  Open();
  Apply();
  EXPECT_TRUE(program.RunUntil([&] { return program.orvane->Link().Flags().MeterFound; }, 20000));
}

TEST_F(ProgramSettings, APortThatIsPluggedInLaterIsTriedAtOnce) {
  program.port.SetPresent(false);
  ASSERT_TRUE(program.Start());
  program.RunFor(5000);
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  TopWindowClient& system = face.Main().System();
  program.ports.ports = {{7, "somebody else's"}};
  system.OnDevicesChanged();
  program.RunFor(5000);
  EXPECT_EQ(program.desktop.boxes.size(), 1U);
  program.port.SetPresent(true);
  program.ports.ports = {{2, ""}};
  system.OnDevicesChanged();
  EXPECT_TRUE(program.RunUntil([&] { return program.orvane->Link().Flags().MeterFound; }, 20000));
}

// --- what the system tells --------------------------------------------------------------------------------

TEST_F(ProgramSettings, ARemovedPortAndASleepAreFollowedByAReturn) {
  ASSERT_TRUE(running.Start());
  TopWindowClient& system = face.Main().System();
  system.OnPortRemoved(9);
  EXPECT_TRUE(program.port.PortOpen()) << "somebody else's";
  for (const bool removal : {true, false}) {
    program.port.SetPresent(!removal);
    removal ? system.OnPortRemoved(2) : system.OnResumed();
    EXPECT_FALSE(program.port.PortOpen());
    EXPECT_EQ(program.Status(), "Port Lost");
    if (removal) program.RunFor(10000);
    program.port.SetPresent(true);
    program.line.Meter.SetPower(removal ? 77 : 88, 0);
    EXPECT_TRUE(program.RunUntil([&] { return program.Fwd() == (removal ? "77" : "88"); }, 3000));
    EXPECT_TRUE(program.desktop.boxes.empty());
  }
}

TEST_F(ProgramSettings, TheButtonsOfTheAboutBoxStartTheirProgramsOrTellThatTheyCouldNot) {
  ASSERT_TRUE(running.Start());
  program.desktop.choices = {1002};
  Face::In(face.Main(), *face.Controls().cmdMenu[2]).Click();
  ASSERT_NE(program.desktop.Dialog(), nullptr);
  HeadlessTopWindow& box = *program.desktop.Dialog();
  EXPECT_EQ(box.Text(), "About");
  EXPECT_EQ(box.centered_on, &face.Main());
  EXPECT_EQ(face.Main().State(), WindowState::kMinimized) << "it makes room";
  const About& about = *program.orvane->AboutBox();
  HeadlessWindow& frame = Face::In(box, about.frame);
  const std::tuple<const PanelButton*, const char*, const char*> rows[] = {
      {&about.cmdQuorranSln, "https://www.quorran.example/", "The browser could not be started."},
      {&about.lblEMail, "mailto:support@quorran.example", "The mail program could not be started."},
      {&about.cmdSysInfo, "Msinfo32.exe", "System Info could not be started."}};
  for (const auto& [button, target, sentence] : rows) {
    for (const bool works : {true, false}) {
      program.shell.works = works;
      program.shell.launches.clear();
      PanelWindow<HeadlessButton>(frame, *button).Push();
      ASSERT_EQ(program.shell.launches.size(), 1U) << target;
      EXPECT_TRUE(program.shell.launches[0].target.starts_with(target)) << program.shell.launches[0].target;
      EXPECT_EQ(program.Status() == sentence, !works) << target;
      EXPECT_EQ(face.Main().State() == WindowState::kNormal, !works) << target;
      face.Main().SetState(WindowState::kMinimized);
    }
  }
  EXPECT_FALSE(box.Press(Key::kSpace)) << "left to the button that has the keyboard";
  EXPECT_TRUE(box.Shown());
  PanelWindow<HeadlessButton>(frame, about.cmdClose).Push();
  EXPECT_FALSE(box.Shown());
  EXPECT_EQ(face.Main().State(), WindowState::kNormal) << "and comes back";
  face.Main().SetState(WindowState::kMinimized);
  box.Close();
  EXPECT_EQ(face.Main().State(), WindowState::kMinimized) << "a closed box is not closed again";
}

}  // namespace
}  // namespace orvane
