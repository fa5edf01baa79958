// ComMsgMgrTest.cpp: the three message shapes, scopes, listeners, the catalogue and the printer.
#include "msg/ComMsgMgr.h"

#include "exception/HEXAll.h"
#include "msg/ComMsgCatalogue.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

namespace {

TEST(ComMsgMgrScope, TracesAreDroppedUnformattedUntilTheirScopeIsOn) {
  ComMsgCapture capture;
  EXPECT_EQ(ComMsgMgr::hasScope("HABM"), 0);
  sendScopedMsg::eval(1, "f.cpp", 3, "blockmodel", "HABM", 0x1000002U, "Created port '%s'.\n", "a");
  EXPECT_TRUE(capture.records().empty());
  {
    ComMsgScopeGuard on("HABM");
    EXPECT_NE(ComMsgMgr::hasScope("HABM"), 0);
    EXPECT_EQ(ComMsgMgr::hasScope("OTHER"), 0);
    sendScopedMsg::eval(2, "f.cpp", 7, "blockmodel", "HABM", 0x1000002U, "Created port '%s' on block '%s'.\n",
                        "a", std::string("/u0"));
    sendScopedMsg::eval(0, "f.cpp", 8, "blockmodel", "OTHER", 0x1000000U, "not sent\n");
  }
  EXPECT_EQ(ComMsgMgr::hasScope("HABM"), 0);
  ASSERT_EQ(capture.records().size(), 1U);
  ComMsgRecord const& r = capture.records()[0];
  EXPECT_EQ(r.shape, ComMsgShape::SCOPED_TRACE);
  EXPECT_EQ(r.domain, "blockmodel");
  EXPECT_EQ(r.scope, "HABM");
  EXPECT_EQ(r.mask, 0x1000002U);
  EXPECT_EQ(r.format, "Created port '%s' on block '%s'.\n");
  EXPECT_EQ(r.args, (std::vector<std::string>{"a", "/u0"}));
  EXPECT_EQ(r.text, "Created port 'a' on block '/u0'.\n");
  EXPECT_EQ(r.file, "f.cpp");
  EXPECT_EQ(r.line, 7);
}

TEST(ComMsgMgrFormat, PrintfConversionsAndMalformedFormatsNeverThrow) {
  ComMsgScopeGuard on("T");
  ComMsgCapture capture;
  auto send = [](char const* format, auto... args) {
    sendScopedMsg::eval(static_cast<int>(sizeof...(args)), __FILE__, __LINE__, "d", "T", 0x1000000U, format,
                        args...);
  };
  send("%d/%x/%s/%s", 42, 255U, 1.5, nullptr);
  send("%s and %s", "one");                        // too few arguments
  send("%s", "one", "two");                        // too many arguments
  send("Removed '%s'%' from '%s'.\n", "i", "/b");  // a stray "%'" in the format
  send("100%");
  ASSERT_EQ(capture.records().size(), 5U);
  EXPECT_EQ(capture.records()[0].text, "42/ff/1.5/(null)");
  EXPECT_EQ(capture.records()[0].args, (std::vector<std::string>{"42", "255", "1.5", "(null)"}));
  EXPECT_EQ(capture.records()[1].text, "one and ");
  EXPECT_EQ(capture.records()[2].text, "one");
  for (auto const& r : capture.records()) {
    EXPECT_FALSE(r.text.empty()) << r.format;
  }
  EXPECT_NE(capture.records()[3].text.find("/b"), std::string::npos) << capture.records()[3].text;
}

TEST(ComMsgMgrCatalogue, CatalogueMessagesCarryTheirSentenceFilledWithTheArguments) {
  ComMsgCapture capture;
  sendMsg::eval(1, "r.cpp", 10, "blockmodel", 0x20000000U, "@90-4@%s", "/tmp/x.bm");
  sendMsg::eval(2, "r.cpp", 11, "blockmodel", 0x20000000U, "@90-8@%s%s", "String", "lock_state");
  sendMsg::eval(1, "r.cpp", 12, "blockmodel", 0x20000000U, "@99-1@%s", "unknown id");
  ASSERT_EQ(capture.records().size(), 3U);
  EXPECT_EQ(capture.records()[0].shape, ComMsgShape::CATALOGUE);
  EXPECT_EQ(capture.records()[0].format, "@90-4@%s");
  EXPECT_EQ(capture.records()[0].catalogueId(), "90-4");
  EXPECT_EQ(capture.records()[0].text, "Could not read the block model file '/tmp/x.bm'.");
  EXPECT_NE(capture.records()[1].text.find("String"), std::string::npos);
  EXPECT_NE(capture.records()[1].text.find("'lock_state'"), std::string::npos);
  // An id the catalogue lacks still says everything it was given.
  EXPECT_EQ(capture.records()[2].text, "@99-1@unknown id");
}

TEST(ComMsgMgrCatalogue, EveryLibraryIdHasASentenceUsingEachArgument) {
  std::set<std::string> ids;
  for (auto const& e : ComMsgCatalogue::entries()) {
    ids.insert(std::string(e.id));
    std::vector<std::string> args;
    for (unsigned i = 0; i < e.argCount; ++i) {
      args.push_back("<arg" + std::to_string(i) + ">");
    }
    std::string text;
    ASSERT_TRUE(ComMsgCatalogue::render(e.id, args, text));
    for (auto const& a : args) {
      EXPECT_NE(text.find(a), std::string::npos) << e.id << ": " << text;
    }
    EXPECT_EQ(ComMsgCatalogue::find(e.id), &e);
  }
  std::set<std::string> const expected = {"90-2", "90-3", "90-4", "90-5",  "90-6",
                                          "90-7", "90-8", "90-9", "90-10", "56-598"};
  EXPECT_EQ(ids, expected);
  EXPECT_EQ(ComMsgCatalogue::idOf("@90-10@%s%s"), "90-10");
  EXPECT_EQ(ComMsgCatalogue::idOf("Created '%s'"), "");
  EXPECT_EQ(ComMsgCatalogue::idOf("@90-10"), "");
}

TEST(ComMsgMgrDeferred, InstancesAreBuiltNowAndDeliveredWhenSent) {
  ComMsgCapture capture;
  ComMsgMgrInstance m = ComMsgMgrInstance::createInstance::eval(
      2, "HABMBlockChecker", 72, "blockmodel", 0x10000000U, "@90-10@%s%s", "top", " Found instance '/u0'.");
  EXPECT_TRUE(capture.records().empty());
  EXPECT_EQ(m.getMessage(), "Design rule notice on module 'top': Found instance '/u0'.");
  m.setType(0x8000000U, true);
  EXPECT_EQ(m.getMask(), 0x8000000U);
  ComMsgMgr::sendMessage(m);
  ASSERT_EQ(capture.records().size(), 1U);
  EXPECT_EQ(capture.records()[0].shape, ComMsgShape::DEFERRED);
  EXPECT_EQ(capture.records()[0].mask, 0x8000000U);
  EXPECT_EQ(capture.records()[0].line, 72);
  m.setType(0x8000000U, false);
  EXPECT_EQ(m.getMask(), 0U);
}

TEST(ComMsgMgrListeners, ListenersComeAndGoAroundAScope) {
  std::vector<int> calls;
  auto const first = ComMsgMgr::addListener([&](ComMsgRecord const&) { calls.push_back(1); });
  {
    ComMsgListenerGuard second([&](ComMsgRecord const&) { calls.push_back(2); });
    sendMsg::eval(1, "f", 1, "d", 0x20000000U, "@90-7@%s", "x");
  }
  sendMsg::eval(1, "f", 1, "d", 0x20000000U, "@90-7@%s", "x");
  ComMsgMgr::removeListener(first);
  ComMsgMgr::removeListener(first);  // twice is harmless
  sendMsg::eval(1, "f", 1, "d", 0x20000000U, "@90-7@%s", "x");
  EXPECT_EQ(calls, (std::vector<int>{1, 2, 1}));
}

TEST(ComMsgMgrListeners, AListenerMayRemoveItselfWhileBeingCalled) {
  int calls = 0;
  ComMsgMgr::ListenerId id = 0;
  id = ComMsgMgr::addListener([&](ComMsgRecord const&) {
    ++calls;
    ComMsgMgr::removeListener(id);
  });
  sendMsg::eval(1, "f", 1, "d", 0x20000000U, "@90-7@%s", "x");
  sendMsg::eval(1, "f", 1, "d", 0x20000000U, "@90-7@%s", "x");
  EXPECT_EQ(calls, 1);
}

TEST(ComMsgMgrPrint, SeverityWordIdAndEachLineOfTheText) {
  struct {
    unsigned mask;
    char const* word;
  } const words[] = {{0x20000000U, "ERROR"}, {0x10000000U, "WARNING"}, {0x8000000U, "INFO"},
                     {0x1000002U, "TRACE"},  {0x1000001U, "TRACE"},    {0U, "MESSAGE"}};
  for (auto const& w : words) {
    EXPECT_STREQ(ComMsgMgr::severityWord(w.mask), w.word);
  }
  ComMsgCapture capture;
  sendMsg::eval(1, "f", 1, "blockmodel", 0x20000000U, "@90-7@%s", "/tmp/o.v");
  {
    ComMsgScopeGuard on("HABM");
    sendScopedMsg::eval(0, "f", 1, "blockmodel", "HABM", 0x1000000U, "line one\nline two\n");
  }
  std::ostringstream out;
  for (auto const& r : capture.records()) {
    ComMsgMgr::print(out, r);
  }
  EXPECT_EQ(out.str(),
            "ERROR: [90-7] Could not write the file '/tmp/o.v'.\n"
            "TRACE: line one\n"
            "TRACE: line two\n");
}

TEST(HEXAllTest, CarriesAnOptionalMessage) {
  HEXAll const empty;
  EXPECT_EQ(empty.getMessage(), nullptr);
  EXPECT_STREQ(empty.what(), "");
  HEXAll const full(ComMsgMgrInstance::createInstance::eval(1, "f", 1, "d", 0x20000000U, "@90-7@%s", "p"));
  ASSERT_NE(full.getMessage(), nullptr);
  EXPECT_STREQ(full.what(), "Could not write the file 'p'.");
}

}  // namespace
