// The assertion handler, the message box sink and the user exception.
#include "TestSupport.h"

#include <afx/Afx.h>

#include <gtest/gtest.h>

namespace {

TEST(Diagnostics, TheHandlerCanBeReplacedAndRestored) {
  std::vector<std::string> seen;
  auto previous =
      Zolt::Diagnostics::SetAssertHandler([&](const char* file, int line, const char* function, const char* message) {
        seen.push_back(std::string(file) + ":" + std::to_string(line) + ":" + function + ":" + message);
      });
  Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("DB/src/X", 12, "IOF::X::Y", "msg");
  auto mine = Zolt::Diagnostics::SetAssertHandler(previous);
  EXPECT_EQ(seen, std::vector<std::string>{"DB/src/X:12:IOF::X::Y:msg"});
  EXPECT_TRUE(static_cast<bool>(mine));
  {
    TestSupport::AssertRecorder nested;
    Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("f", 1, "g", "");
    EXPECT_EQ(nested.Calls().size(), 1u);
  }
  EXPECT_EQ(seen.size(), 1u);
}

TEST(Diagnostics, MessageBoxGoesToTheSinkAndTheUserExceptionIsCatchable) {
  std::vector<CString> shown;
  auto previous = AfxSetMessageBoxHandler([&](const CString& text) { shown.push_back(text); });
  EXPECT_EQ(AfxMessageBox(CString(L"Stream Iterator unable to access entity!"), MB_ICONERROR, 0), IDOK);
  AfxSetMessageBoxHandler(previous);
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0], L"Stream Iterator unable to access entity!");
  EXPECT_THROW(AfxThrowUserException(), CUserException);
}

}  // namespace
