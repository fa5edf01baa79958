// ComMsgMgrTest.cpp: the three message shapes, scopes, listeners, the catalogue and the printer.
#include "msg/ComMsgMgr.h"

#include "exception/HEXAll.h"
#include "msg/ComMsgCatalogue.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(ComMsgMgr, TracesAreDroppedUnformattedUntilAGuardSwitchesTheirScopeOn) {
  ComMsgCapture capture;
  sendScopedMsg::eval(1, "f.cpp", 3, "blockmodel", "HABM", 0x1000002U, "Created port '%s'.\n", "a");
  {
    ComMsgScopeGuard on("HABM");
    ComMsgScopeGuard{"HABM", false};  // a nested guard, gone at once, leaves the scope on again
    sendScopedMsg::eval(2, "f.cpp", 7, "blockmodel", "HABM", 0x1000002U, "Created port '%s' on block '%s'.\n",
                        "a", std::string("/u0"));
    sendScopedMsg::eval(0, "f.cpp", 8, "blockmodel", "OTHER", 0x1000000U, "not sent\n");
  }
  EXPECT_EQ(ComMsgMgr::hasScope("HABM"), 0);  // the guard restored it
  ASSERT_EQ(capture.texts(), std::vector<std::string>{"Created port 'a' on block '/u0'.\n"});
  EXPECT_EQ(capture.records()[0].shape, ComMsgShape::SCOPED_TRACE);
  EXPECT_EQ(capture.records()[0].args, (std::vector<std::string>{"a", "/u0"}));
}

TEST(ComMsgMgr, FormatsPrintfConversionsAndNeverThrowsOnAMalformedFormat) {
  auto const textOf = [](char const* format, std::vector<ComMsgArg> const& args) {
    return comMsgMakeRecord(ComMsgShape::SCOPED_TRACE, "f.cpp", 1, "d", "T", 0x1000000U, format, args).text;
  };
  EXPECT_EQ(textOf("%d/%x/%s/%s", {42, 255U, 1.5, nullptr}), "42/ff/1.5/(null)");
  EXPECT_EQ(textOf("%s and %s", {"one"}), "one and ");  // too few arguments
  EXPECT_EQ(textOf("%s", {"one", "two"}), "one");       // too many arguments
  std::string const stray = textOf("Removed '%s'%' from '%s'.\n", {"i", "/b"});
  EXPECT_NE(stray.find("/b"), std::string::npos) << stray;  // the arguments stay readable
}

TEST(ComMsgMgr, CatalogueMessagesCarryTheirSentenceWithEveryArgumentAndUnknownIdsTheirFormat) {
  ComMsgCapture capture;
  sendMsg::eval(1, "r.cpp", 10, "blockmodel", 0x20000000U, "@90-4@%s", "/tmp/x.bm");
  sendMsg::eval(1, "r.cpp", 12, "blockmodel", 0x20000000U, "@90-1@%s", "unknown id");
  ASSERT_EQ(capture.texts(), (std::vector<std::string>{"Could not read the block model file '/tmp/x.bm'.",
                                                       "@90-1@unknown id"}));
  EXPECT_EQ(capture.records()[0].shape, ComMsgShape::CATALOGUE);
  EXPECT_EQ(ComMsgCatalogue::idOf("@90-10"), "");
  // Every sentence is found by its id and uses each argument.
  for (auto const& e : ComMsgCatalogue::entries()) {
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
}

TEST(ComMsgMgr, DeferredMessagesAreBuiltNowAndDeliveredWhenSentOrSaidByTheExceptionCarryingThem) {
  ComMsgCapture capture;
  ComMsgMgrInstance m = ComMsgMgrInstance::createInstance::eval(
      2, "HABMBlockChecker", 72, "blockmodel", 0x10000000U, "@90-10@%s%s", "top", " Found instance '/u0'.");
  EXPECT_TRUE(capture.records().empty());
  EXPECT_EQ(m.getMessage(), "Design rule notice on module 'top': Found instance '/u0'.");
  m.setType(0x8000000U, true);  // replaces the severity
  ComMsgMgr::sendMessage(m);
  ASSERT_EQ(capture.records().size(), 1U);
  EXPECT_EQ(capture.records()[0].shape, ComMsgShape::DEFERRED);
  EXPECT_EQ(capture.records()[0].mask, 0x8000000U);
  EXPECT_STREQ(HEXAll(m).what(), m.getMessage().c_str());
  EXPECT_STREQ(HEXAll().what(), "");
}

TEST(ComMsgMgr, ListenersAreCalledInOrderAndMayRemoveThemselvesWhileCalled) {
  std::vector<int> calls;
  ComMsgMgr::ListenerId const once = ComMsgMgr::addListener([&](ComMsgRecord const&) {
    calls.push_back(1);
    ComMsgMgr::removeListener(once);
  });
  {
    ComMsgListenerGuard second([&](ComMsgRecord const&) { calls.push_back(2); });
    ComMsgMgr::deliver(ComMsgRecord());
    ComMsgMgr::deliver(ComMsgRecord());
  }
  ComMsgMgr::deliver(ComMsgRecord());
  EXPECT_EQ(calls, (std::vector<int>{1, 2, 2}));
}

TEST(ComMsgMgr, HeldMessagesGoOnInOrderWhenReleasedThroughEnclosingHoldsAndAreDroppedOtherwise) {
  ComMsgCapture capture;
  auto const send = [](char const* text) { sendMsg::eval(1, __FILE__, __LINE__, "t", 0U, "%s", text); };
  {
    ComMsgHold outer;
    send("a");
    {
      ComMsgHold dropped;
      send("lost");
    }
    {
      ComMsgHold inner;
      send("b");
      inner.release();
      send("c");  // back in the outer hold
    }
    EXPECT_TRUE(capture.records().empty());
    outer.release();
    send("d");
  }
  EXPECT_EQ(capture.texts(), (std::vector<std::string>{"a", "b", "c", "d"}));
}

TEST(ComMsgMgr, PrintsTheStrongestSeverityTheIdAndEachLineOfTheText) {
  std::string words;
  for (unsigned mask : {0x30000000U, 0x18000000U, 0x9000000U, 0x1000002U, 0x2U}) {
    words += ComMsgMgr::severityWord(mask) + std::string(" ");
  }
  EXPECT_EQ(words, "ERROR WARNING INFO TRACE MESSAGE ");
  std::ostringstream out;
  ComMsgMgr::print(out, comMsgMakeRecord(ComMsgShape::CATALOGUE, "f", 1, "d", nullptr, 0x30000000U,
                                         "@90-7@%s", {"/tmp/o.v"}));
  ComMsgMgr::print(out, comMsgMakeRecord(ComMsgShape::SCOPED_TRACE, "f", 1, "d", "HABM", 0x1000002U,
                                         "line one\nline two\n", {}));
  EXPECT_EQ(out.str(),
            "ERROR: [90-7] Could not write the file '/tmp/o.v'.\n"
            "TRACE: line one\n"
            "TRACE: line two\n");
}

}  // namespace
