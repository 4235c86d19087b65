// Starting programs with the system's process service: a small probe program reports the
// command line and window position it was started with.
#include <windows.h>

#include <gtest/gtest.h>

#include "probe_report_win.h"
#include "services/process.h"
#include "support/temp_dir.h"
#include "system/utf.h"
#include "system/wide_text_win.h"

namespace {

std::u16string Quoted(const std::u16string& text)
{
  return u"\"" + text + u"\"";
}

TEST(SystemProcessService, StartsTheProgramWithItsCommandLineAndPosition)
{
  TempDir folder;
  const std::u16string report = folder.File(u"report.txt");
  ProcessStartRequest request;
  request.program = ProbeProgramPath();
  request.commandLine = Quoted(request.program) + u" " + Quoted(report) + u" hello";
  request.position = ScreenPosition{120, 340};
  std::u16string failureText;
  ASSERT_EQ(StartProcess(request, &failureText), kStatusSuccess)
      << Utf16ToUtf8(failureText.c_str());
  EXPECT_EQ(WaitForProbeReport(report), request.commandLine + u"\nposition 120 340");
}

TEST(SystemProcessService, ExpandsEnvironmentReferencesInTheProgramPath)
{
  TempDir folder;
  const std::u16string report = folder.File(u"report.txt");
  const std::u16string probe = ProbeProgramPath();
  const std::u16string probeFolder = probe.substr(0, probe.rfind(u'\\'));
  ASSERT_TRUE(SetEnvironmentVariableW(L"CRYPTELLE_PROBE_FOLDER", Wide(probeFolder)));
  ProcessStartRequest request;
  request.program = u"%CRYPTELLE_PROBE_FOLDER%\\service_probe.exe";
  request.commandLine = u"probe " + Quoted(report);
  EXPECT_EQ(StartProcess(request, nullptr), kStatusSuccess);
  EXPECT_EQ(WaitForProbeReport(report), request.commandLine + u"\nno position");
  SetEnvironmentVariableW(L"CRYPTELLE_PROBE_FOLDER", nullptr);
}

TEST(SystemProcessService, FindsAProgramNamedOnlyByTheCommandLineInTheProgramsFolder)
{
  // As the monitor is started: no program path, a bare name, an empty desktop name.
  TempDir folder;
  const std::u16string report = folder.File(u"report.txt");
  ProcessStartRequest request;
  request.commandLine = u"service_probe.exe " + Quoted(report);
  request.desktop = u"";
  EXPECT_EQ(StartProcess(request, nullptr), kStatusSuccess);
  EXPECT_EQ(WaitForProbeReport(report), request.commandLine + u"\nno position");
}

TEST(SystemProcessService, MissingProgramFailsWithTheSystemsText)
{
  TempDir folder;
  ProcessStartRequest request;
  request.program = folder.File(u"missing.exe");
  request.commandLine = u"missing.exe";
  std::u16string failureText;
  EXPECT_EQ(StartProcess(request, &failureText), kSysNotFound);
  EXPECT_FALSE(failureText.empty());
}

}  // namespace
