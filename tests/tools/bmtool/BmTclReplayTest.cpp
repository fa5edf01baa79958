// BmTclReplayTest.cpp: the constraint scripts of "bmtool constraints", sourced by a real tclsh with
// recording stand-ins for the host's NoC commands, for every block of the examples and of a generated NoC
// design; what the commands received is compared with the model the script came from.
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "util/HUTFile.h"

#include "../../shared/common/blockmodel/HABMNocTestUtil.h"
#include "../../shared/common/blockmodel/HABMTestFiles.h"
#include "BmCli.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <tuple>

namespace {

using N = HABMNocInterface;
using habm_test::makeNocInterface;
using Lines = std::vector<std::string>;

// The host's commands as the script uses them, each call checked (options, objects made earlier, list
// shapes) and recorded as one line of tab-separated fields, backslash, tab and newline escaped.
constexpr char kRecorder[] = R"tcl(
set objects [dict create]

proc record {args} {
  puts [join [lmap field $args {string map [list \\ \\\\ \t \\t \n \\n] $field}] \t]
}

proc object {kind path} {
  dict set ::objects $kind:$path 1
  return $kind:$path
}

proc known {object kind} {
  if {![dict exists $::objects $object] || ![string match $kind:* $object]} {
    error "'$object' is no $kind object"
  }
}

# Each allowed "-name value" pair exactly once, then one path.
proc parse {words allowed} {
  set options [dict create]
  while {[llength $words] > 1} {
    set words [lassign $words name value]
    if {$name ni $allowed || [dict exists $options $name]} {
      error "unexpected option '$name'"
    }
    dict set options $name $value
  }
  if {[llength $words] != 1 || [dict size $options] != [llength $allowed]} {
    error "not each of $allowed, then a path"
  }
  return [list $options [lindex $words 0]]
}

proc interface {how words} {
  lassign [parse $words {-mode -type}] options path
  record interface $how [dict get $options -mode] [dict get $options -type] $path
  object iface $path
}

# The ends of a connection are fetched by their path alone.
proc get_noc_interfaces {args} {
  if {[llength $args] == 1} {
    return [object iface [lindex $args 0]]
  }
  interface get $args
}

proc create_noc_interface {args} {
  interface create $args
}

proc create_noc_connection {args} {
  lassign [parse $args {-source -target}] options path
  foreach option {-source -target} {
    known [dict get $options $option] iface
    lappend ends [string range [dict get $options $option] 6 end]
  }
  record connection create {*}$ends $path
  object conn $path
}

# Tcl itself refuses any other number of words.
proc set_property {name value object} {
  switch -- $name {
    -dict {
      known $object *
      if {[llength $value] % 2} {
        error "odd dictionary list"
      }
      foreach {key item} $value {
        record parameter $object $key $item
      }
    }
    APERTURES - REMAPS {
      known $object [expr {$name eq "APERTURES" ? "iface" : "conn"}]
      # An item of the wrong length gives a malformed record.
      foreach item $value {
        record $name $object {*}$item
      }
    }
    LOCATION - TDEST_ID {
      known $object iface
      record $name $object $value
    }
    default {
      error "unknown property '$name'"
    }
  }
}

source [lindex $argv 0]
)tcl";

// What the commands received for one object, by its object name ("iface:a/b", "conn:a/c").
struct Received {
  int made = 0;
  std::string how, mode, type;  // interfaces
  std::string source, target;   // connections
  std::set<HABMAddrAperture> apertures;
  std::set<HABMAddrRemap> remaps;
  std::string location, tdestId;
  std::vector<std::pair<std::string, std::string>> parameters;
};

Lines fields(std::string const& line) {
  Lines out(1);
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\t') {
      out.emplace_back();
    } else if (line[i] == '\\' && i + 1 < line.size()) {
      char const next = line[++i];
      out.back() += next == 't' ? '\t' : next == 'n' ? '\n' : next;
    } else {
      out.back() += line[i];
    }
  }
  return out;
}

HABMAddrValue number(std::string const& text) {
  HABMAddrValue const value(text);
  EXPECT_TRUE(value.isValid()) << "'" << text << "' is no address";
  return value;
}

std::map<std::string, Received> parseRecords(std::string const& text) {
  std::map<std::string, Received> objects;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    Lines const f = fields(line);
    std::size_t const n = f.size();
    if (f[0] == "interface" && n == 5) {
      Received& r = objects["iface:" + f[4]];
      ++r.made;
      std::tie(r.how, r.mode, r.type) = std::tie(f[1], f[2], f[3]);
    } else if (f[0] == "connection" && n == 5) {
      Received& r = objects["conn:" + f[4]];
      ++r.made;
      std::tie(r.source, r.target) = std::tie(f[2], f[3]);
    } else if (f[0] == "APERTURES" && n == 4) {
      objects[f[1]].apertures.insert(HABMAddrAperture(number(f[2]), number(f[3])));
    } else if (f[0] == "REMAPS" && n == 5) {
      objects[f[1]].remaps.insert(HABMAddrRemap(number(f[2]), number(f[3]), number(f[4])));
    } else if (f[0] == "LOCATION" && n == 3) {
      objects[f[1]].location = f[2];
    } else if (f[0] == "TDEST_ID" && n == 3) {
      objects[f[1]].tdestId = f[2];
    } else if (f[0] == "parameter" && n == 4) {
      objects[f[1]].parameters.emplace_back(f[2], f[3]);
    } else {
      ADD_FAILURE() << "malformed record: " << line;
    }
  }
  return objects;
}

bool skipped(HABMBlock const& block, HABMBlock const& owner, Lines const& skip) {
  std::string const path = HABMPath::get_relative_path(block, owner.getInstancePath());
  return std::any_of(skip.begin(), skip.end(), [&](std::string const& s) { return path.rfind(s, 0) == 0; });
}

// What the host received for `name`; nothing, not even its making, when the object never reached it.
Received const& received(std::map<std::string, Received> const& objects, std::string const& name) {
  static Received const nothing;
  auto const it = objects.find(name);
  return it == objects.end() ? nothing : it->second;
}

// Every interface and connection the script should hold reached the host once, under a path that leads
// back to it, with the values the model holds; nothing else did.
void expectReceivedAsModelled(HABMBlock const& block, Lines const& skip,
                              std::map<std::string, Received> const& objects) {
  std::size_t expected = 0;
  for (HABMNocInterface const* iface : block.findNocInterfaces("", true, false)) {
    if ((!iface->getEditable() && !iface->getParent()->isOpmNocModule()) ||
        skipped(block, *iface->getParent(), skip)) {
      continue;
    }
    ++expected;
    std::string const path = HABMPath::get_relative_path(block, iface->getPath());
    SCOPED_TRACE(path);
    Received const& r = received(objects, "iface:" + path);
    EXPECT_EQ(block.findNocInterface(path, true), iface);
    EXPECT_EQ(r.made, 1);
    EXPECT_EQ(r.how, iface->getEditable() ? "create" : "get");
    EXPECT_EQ(N::encodeNocMode(r.mode), iface->getNocMode());
    EXPECT_EQ(N::encodeNocProtocol(r.type), iface->getNocProtocol());
    EXPECT_EQ(r.apertures, iface->getApertures());
    EXPECT_EQ(r.location, iface->getLocation());
    EXPECT_EQ(r.tdestId, iface->getTdestId());
    std::vector<std::pair<std::string, std::string>> parameters;
    for (HABMParameter const* p : iface->getParameters()) {
      if (!N::isReadonlyParameter(p->getName())) {
        parameters.emplace_back(p->getName(), p->getValue());
      }
    }
    EXPECT_EQ(r.parameters, parameters);
  }
  for (HABMNocConnection const* connection : block.findNocConnections("", true, false)) {
    if (!connection->getEditable() || skipped(block, *connection->getParent(), skip)) {
      continue;
    }
    ++expected;
    std::string const path = HABMPath::get_relative_path(block, connection->getPath());
    SCOPED_TRACE(path);
    Received const& r = received(objects, "conn:" + path);
    EXPECT_EQ(block.findNocConnection(path, true), connection);
    EXPECT_EQ(r.made, 1);
    EXPECT_EQ(block.findNocInterface(r.source, true), connection->getSourceNocInterface());
    EXPECT_EQ(block.findNocInterface(r.target, true), connection->getTargetNocInterface());
    if (!connection->isPrimary()) {
      EXPECT_TRUE(r.remaps.empty() && r.parameters.empty());
      continue;
    }
    EXPECT_EQ(r.remaps, connection->getRemaps());
    // Each parameter came once with the model's value, or did not come and holds its default.
    std::map<std::string, std::string> const defaults =
        HABMNocConnection::getDefaultParameterValues(*connection);
    std::map<std::string, std::string> came(r.parameters.begin(), r.parameters.end());
    EXPECT_EQ(came.size(), r.parameters.size()) << "a parameter came twice";
    for (HABMParameter const* p : connection->getParameters()) {
      auto const& holder = came.count(p->getName()) != 0 ? came : defaults;
      EXPECT_TRUE(holder.count(p->getName()) != 0 && holder.at(p->getName()) == p->getValue())
          << p->getName() << " = '" << p->getValue() << "' is not what the host holds";
      came.erase(p->getName());
    }
    EXPECT_TRUE(came.empty()) << ::testing::PrintToString(came) << " came, which the model does not hold";
  }
  EXPECT_EQ(objects.size(), expected);
}

// Texts that braces keep as they stand: Tcl's special characters, balanced braces, line breaks.
char const* const kValues[] = {
    "",           "plain",      "two words",   "x{y}z",       "{}",    "[exit 3]", "$name",
    "\"quoted\"", "semi;colon", "back\\slash", "line\nbreak", "#hash", "tab\tin",  "{a {b c}} d"};

// Subsystems whose cores send through a virtual boundary interface to the next subsystem's OPM NoC RAM,
// and streams from each core to the next subsystem's virtual target; drawn from a fixed seed.
std::unique_ptr<HABMBlock> generatedNocDesign(unsigned subsystems) {
  std::mt19937 random(16);
  auto chance = [&random](unsigned percent) { return random() % 100 < percent; };
  auto value = [&random] { return kValues[random() % std::size(kValues)]; };
  auto top = HABMBlock::createTopBlock("noc_top");
  makeNocInterface(*top, "INI_nsu", N::MODE_NSU, N::PROTOCOL_AXIMM, N::CATEGORY_INI)->setEditable(true);
  makeNocInterface(*top->createSubBlock("hbm", "hbm", false), "INI_nmu", N::MODE_NMU, N::PROTOCOL_AXIMM,
                   N::CATEGORY_INI);
  top->createNocConnection("hbm/INI_nmu", "INI_nsu", true)->setEditable(true);
  for (unsigned i = 0; i < subsystems; ++i) {
    std::string const index = std::to_string(i);
    HABMBlock* sub = top->createSubBlock("ss" + index, "subsystem", false);
    HABMBlock* core = sub->createSubBlock("core", "core", false);
    HABMNocInterface* nmu = makeNocInterface(*core, "M_AXI_nmu", N::MODE_NMU, N::PROTOCOL_AXIMM);
    nmu->setEditable(chance(70));
    nmu->setLocation("NOC_NMU512_X" + index + "Y0");
    nmu->createParameter(N::ADDR_WIDTH(), "64");
    nmu->createParameter(N::READ_TRAFFIC_CLASS(), chance(50) ? "BEST_EFFORT" : "low_latency");
    nmu->createParameter("USER_NOTE", value());
    makeNocInterface(*core, "M_AXIS_nmu", N::MODE_NMU, N::PROTOCOL_AXIS)->setEditable(true);
    makeNocInterface(*sub, "vnmu", N::MODE_VNMU, N::PROTOCOL_AXIMM)->setEditable(true);
    makeNocInterface(*sub, "vnsu", N::MODE_VNSU, N::PROTOCOL_AXIS)->setEditable(chance(80));
    HABMNocInterface* stream = makeNocInterface(*sub, "S_AXIS_nsu", N::MODE_NSU, N::PROTOCOL_AXIS);
    stream->setEditable(true);
    stream->setTdestWidth("4");
    stream->setTdestId(chance(50) ? std::to_string(i % 16) : "1:" + std::to_string(1 + i % 15));
    HABMBlock* ram = sub->createSubBlock("ram", "noc_pl_ram", false);
    ram->createAttribute("OPM_NOC", "NSU_MM");
    HABMNocInterface* nsu = makeNocInterface(*ram, "S_AXI_nsu", N::MODE_NSU, N::PROTOCOL_AXIMM);
    nsu->setEditable(chance(30));
    nsu->setApertures({HABMAddrAperture(HABMAddrValue(0x201, i * 0x100000ULL), HABMAddrValue("1M")),
                       HABMAddrAperture(HABMAddrValue(0, 0x1000ULL * random()), HABMAddrValue("4K"))});
    nsu->setLocation("NOC_NSU512_X" + index + "Y1");
    nsu->createParameter(N::DATA_WIDTH(), "128");
    // Remaps on a link that carries no traffic requirements stay in the model only.
    HABMNocConnection* out = sub->createNocConnection("core/M_AXI_nmu", "vnmu", true);
    out->setEditable(true);
    out->setRemaps({HABMAddrRemap(HABMAddrValue(0, 0), HABMAddrValue(0, 0x10000ULL), HABMAddrValue("4K"))});
    sub->createNocConnection("vnsu", "S_AXIS_nsu", true)->setEditable(chance(80));
  }
  for (unsigned i = 0; i < subsystems; ++i) {
    std::string const from = "ss" + std::to_string(i);
    std::string const to = "ss" + std::to_string((i + 1) % subsystems);
    HABMNocConnection* mm = top->createNocConnection(from + "/vnmu", to + "/ram/S_AXI_nsu", true);
    mm->setEditable(chance(80));
    std::set<HABMAddrRemap> remaps;
    for (auto r = random() % 3; r > 0; --r) {
      remaps.insert(HABMAddrRemap(HABMAddrValue(0, 0x10000ULL * r),
                                  HABMAddrValue(0x201, 0x1000ULL * random()), HABMAddrValue("64K")));
    }
    mm->setRemaps(remaps);
    mm->setParameter(HABMNocConnection::READ_BANDWIDTH(), chance(50) ? "500" : "1200", false);
    mm->setParameter(HABMNocConnection::EXCLUSIVE_ROUTING_GROUP(), chance(50) ? "" : value(), false);
    mm->setParameter(HABMNocConnection::PHASE_SETTINGS(), value(), false);
    HABMNocConnection* st = top->createNocConnection(from + "/core/M_AXIS_nmu", to + "/vnsu", true);
    st->setEditable(true);
    st->setParameter(HABMNocConnection::WRITE_BANDWIDTH(), chance(50) ? "500" : "64", false);
    st->setParameter(HABMNocConnection::SEPARATE_ROUTING_GROUP(), value(), false);
  }
  return top;
}

class BmTclReplay : public habm_test::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    ASSERT_EQ(std::system("echo 'exit 0' | tclsh8.6 >/dev/null 2>&1"), 0)
        << "tclsh8.6 is missing; scripts/setup installs it (Debian package tcl8.6)";
    habm_test::put(path("recorder.tcl"), kRecorder);
  }

  // Writes the script of the block at `instance` with bmtool, sources it and compares.
  void replay(std::string const& design, HABMBlock const& block, Lines const& skip) {
    std::string const instance = block.getInstancePath();
    SCOPED_TRACE(design + " " + instance + " skip " + ::testing::PrintToString(skip));
    Lines args = {"constraints", design, path("x.tcl"), "--instance", instance};
    for (std::string const& s : skip) {
      args.push_back("--skip=" + s);
    }
    std::ostringstream out, err;
    ASSERT_EQ(bmtool::runCli(args, out, err), bmtool::EXIT_OK) << err.str();
    std::string const command = "tclsh8.6 " + path("recorder.tcl") + " " + path("x.tcl") + " >" +
                                path("records") + " 2>" + path("errors");
    ASSERT_EQ(std::system(command.c_str()), 0) << habm_test::bytes(path("errors")) << "\nin\n"
                                               << habm_test::bytes(path("x.tcl"));
    expectReceivedAsModelled(block, skip, parseRecords(habm_test::bytes(path("records"))));
  }

  void replayEveryBlock(std::string const& design, Lines const& skip = {}) {
    auto const top = HABMBlock::readTopBlock(HUTFile(design));
    ASSERT_NE(top, nullptr) << design;
    std::vector<HABMBlock*> blocks = top->findSubBlocks("", true);
    blocks.insert(blocks.begin(), top.get());
    for (HABMBlock const* block : blocks) {
      replay(design, *block, skip);
    }
  }
};

TEST_F(BmTclReplay, ScriptsOfEveryBlockOfTheExamplesAndOfAGeneratedDesignReachTheHostAsModelled) {
  replayEveryBlock(MZ_EXAMPLES_DIR "/noc.bm");
  replayEveryBlock(MZ_EXAMPLES_DIR "/soc.bm");
  replayEveryBlock(MZ_EXAMPLES_DIR "/noc.bm", {"hbm", "accel/core"});
  auto const design = generatedNocDesign(8);
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("generated.bm")), *design, false));
  auto const back = HABMBlock::readTopBlock(HUTFile(path("generated.bm")));
  ASSERT_NE(back, nullptr);
  habm_test::expectSameTree(*design, *back);
  replayEveryBlock(path("generated.bm"));
  replayEveryBlock(path("generated.bm"), {"ss1", "ss2/core", "ss3/ram"});
}

}  // namespace
