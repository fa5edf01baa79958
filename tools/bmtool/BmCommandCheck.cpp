// BmCommandCheck.cpp: "bmtool check": the design-rule findings of one block of a block model file, and on
// request the hazards of its generated HDL, as lines of text or of JSON.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBlockChecker.h"
#include "msg/ComMsgMgr.h"

#include "BmCli.h"
#include "BmHdlSafety.h"
#include "BmProgress.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ostream>
#include <string_view>

namespace bmtool {

namespace {

// The severities a finding can have, in the order the closing line counts them.
constexpr std::array<std::string_view, 3> kSeverities = {"ERROR", "WARNING", "INFO"};

// A JSON string literal. Control characters are escaped, and bytes that are no UTF-8 sequence are kept
// as the code points of the same value, so that a name read from any file gives valid JSON.
std::string jsonString(std::string_view text) {
  std::string out = "\"";
  auto const escaped = [&out](unsigned int code) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "\\u%04x", code);
    out += buffer;
  };
  for (std::size_t i = 0; i < text.size();) {
    auto const byte = static_cast<unsigned char>(text[i]);
    std::size_t const length = utf8SequenceAt(text, i);
    if (length == 0) {
      escaped(byte);
      ++i;
    } else if (length > 1) {
      out.append(text.substr(i, length));
      i += length;
    } else {
      if (text[i] == '"' || text[i] == '\\') {
        out += '\\';
        out += text[i];
      } else if (byte < 0x20 || byte == 0x7F) {
        escaped(byte);
      } else {
        out += text[i];
      }
      ++i;
    }
  }
  return out + "\"";
}

void printJson(std::ostream& out, ComMsgRecord const& finding) {
  std::string const module = finding.args.empty() ? std::string() : finding.args.front();
  out << "{\"severity\":" << jsonString(ComMsgMgr::severityWord(finding.mask))
      << ",\"id\":" << jsonString(finding.catalogueId()) << ",\"module\":" << jsonString(module)
      << ",\"text\":" << jsonString(finding.text) << ",\"rule\":" << finding.line << "}\n";
}

int runCheck(Invocation const& inv) {
  auto const format = inv.options.find("--format");
  bool const json = format != inv.options.end() && format->second == "json";
  if (format != inv.options.end() && !json && format->second != "text") {
    *inv.err << "bmtool check: --format takes 'text' or 'json'\n";
    return EXIT_USAGE;
  }
  auto const top = readDesign(inv, inv.positional[0]);
  HABMBlock const* block = top ? selectedBlock(inv, *top) : nullptr;
  if (block == nullptr) {
    return EXIT_FAILED;
  }
  std::vector<ComMsgRecord> findings;
  {
    // The drawing thread reads only this count, never the findings themselves.
    std::atomic<std::size_t> found{0};
    auto const started = std::chrono::steady_clock::now();
    ProgressLine const progress(inv.progress, [&found, started] {
      auto const seconds =
          std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - started);
      return "bmtool check: " + std::to_string(found.load()) + " findings so far (" +
             std::to_string(seconds.count()) + " s)";
    });
    ComMsgListenerGuard collect([&findings, &found](ComMsgRecord const& record) {
      if (record.shape == ComMsgShape::DEFERRED) {
        findings.push_back(record);
        found.store(findings.size());
      }
    });
    HABMBlockChecker::validate_all(*block);
    if (inv.hasFlag("--hdl")) {
      std::vector<ComMsgMgrInstance> hazards;
      findHdlHazards(*block, hazards);
      for (ComMsgMgrInstance const& hazard : hazards) {
        ComMsgMgr::sendMessage(hazard);
      }
    }
  }
  std::array<std::size_t, kSeverities.size()> counts{};
  for (ComMsgRecord const& finding : findings) {
    std::string_view const severity = ComMsgMgr::severityWord(finding.mask);
    for (std::size_t i = 0; i < kSeverities.size(); ++i) {
      if (severity == kSeverities[i]) {
        ++counts[i];
      }
    }
    if (json) {
      printJson(*inv.out, finding);
    } else {
      *inv.out << severity << ": [" << finding.catalogueId() << "] " << escapeControls(finding.text) << '\n';
    }
  }
  if (json) {
    *inv.out << R"({"counts":{"ERROR":)" << counts[0] << R"(,"WARNING":)" << counts[1] << R"(,"INFO":)"
             << counts[2] << "}}\n";
  } else {
    *inv.out << "Findings: ERROR " << counts[0] << ", WARNING " << counts[1] << ", INFO " << counts[2]
             << '\n';
  }
  return counts[0] > 0 ? EXIT_FAILED : EXIT_OK;
}

}  // namespace

Command makeCheckCommand() {
  Command c;
  c.name = "check";
  c.summary = "run the design-rule checks on one block";
  c.usage = "bmtool check FILE [--instance PATH] [--hdl] [--format text|json]";
  c.help =
      "Reads FILE and runs the design-rule checks on the block at PATH (the top block by default) and\n"
      "everything below it: stub instances, run-time swapped regions, OPM bus widths, NoC interfaces,\n"
      "connections and paths. Prints each finding as 'SEVERITY: [id] text', then the counts by severity.\n"
      "  --hdl          also warn of names and values that the stub and wrapper writers would carry into\n"
      "                 HDL that Verilator or Icarus Verilog reject or misread (ids HDL-1 to HDL-10)\n"
      "  --format json  one JSON object per finding (severity, id, module, text, rule), then one with the\n"
      "                 counts\n"
      "Exit status: 1 when a finding is an ERROR (or FILE cannot be read), 0 otherwise.\n";
  c.flags = {"--hdl"};
  c.options = {"--instance", "--format"};
  c.minArgs = 1;
  c.maxArgs = 1;
  c.reportsFindings = true;
  c.run = runCheck;
  return c;
}

}  // namespace bmtool
