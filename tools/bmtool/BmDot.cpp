// BmDot.cpp: the Graphviz text of a block, written in one walk of the tree on a stack of its own.
#include "BmDot.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"

#include "BmCli.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <set>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bmtool {

namespace {

// Colours of NoC paths, told apart on white; grey is kept for links on no path.
constexpr std::array<char const*, 9> kPathColours = {"#d62728", "#1f77b4", "#2ca02c", "#9467bd", "#ff7f0e",
                                                     "#8c564b", "#e377c2", "#17becf", "#bcbd22"};
// A link on many paths shows this many of their colours side by side.
constexpr std::size_t kMaxColoursPerLink = 6;

// A DOT string: quotes and backslashes escaped, line breaks as "\n", and control characters and bytes
// that are no UTF-8 shown as "\xNN" text, since Graphviz refuses a file with them.
std::string quoted(std::string_view text) {
  std::string out = "\"";
  auto const hex = [&out](unsigned char byte) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "\\\\x%02X", static_cast<unsigned>(byte));
    out += buffer;
  };
  for (std::size_t i = 0; i < text.size();) {
    auto const byte = static_cast<unsigned char>(text[i]);
    std::size_t const length = utf8SequenceAt(text, i);
    if (length > 1) {
      out.append(text.substr(i, length));
      i += length;
      continue;
    }
    if (text[i] == '\n') {
      out += "\\n";
    } else if (text[i] == '"' || text[i] == '\\') {
      out += '\\';
      out += text[i];
    } else if (length == 0 || byte < 0x20 || byte == 0x7F) {
      hex(byte);
    } else {
      out += text[i];
    }
    ++i;
  }
  return out + '"';
}

char const* portFill(HABMPort::PortDirection direction) {
  switch (direction) {
    case HABMPort::DIR_IN:
      return "#dbeafe";
    case HABMPort::DIR_OUT:
      return "#dcfce7";
    case HABMPort::DIR_INOUT:
      return "#fef3c7";
    case HABMPort::DIR_PHANTOM:
    case HABMPort::DIR_UNKNOWN:
      break;
  }
  return "#f3f4f6";
}

// The name part of a VLNV ("aximm" of "orvane:interface:aximm:1.0"), or the whole text when it has no
// four parts.
std::string busName(std::string const& vlnv) {
  std::size_t const first = vlnv.find(':');
  std::size_t const second = first == std::string::npos ? first : vlnv.find(':', first + 1);
  std::size_t const third = second == std::string::npos ? second : vlnv.find(':', second + 1);
  return third == std::string::npos ? vlnv : vlnv.substr(second + 1, third - second - 1);
}

class DotWriter {
 public:
  DotWriter(std::ostream& out, HABMBlock const& top, DotOptions const& options)
      : out_(out), top_(top), options_(options) {
    if (options_.noc) {
      std::set<HABMNocPath> const paths = HABMNocPath::createNocPaths(&top);
      paths_.assign(paths.begin(), paths.end());
      for (std::size_t p = 0; p < paths_.size(); ++p) {
        for (HABMNocConnection const* link : paths_[p].getNocConnections()) {
          auto& on = pathsOf_[link];
          if (on.empty() || on.back() != p) {
            on.push_back(p);
          }
        }
      }
    }
  }

  void write() {
    out_ << "digraph " << quoted(top_.getModuleName()) << " {\n"
         << "  graph [rankdir=LR, fontname=\"Helvetica\", fontsize=11];\n"
         << "  node [fontname=\"Helvetica\", fontsize=9, height=0.3];\n"
         << "  edge [arrowsize=0.6];\n";
    writeBlocks();
    out_ << edges_;
    writeLegend();
    out_ << "}\n";
  }

 private:
  struct Frame {
    HABMBlock const* block;
    std::string path;  // the block's instance path
    unsigned level;
    bool contents;  // whether its sub-blocks and connections are drawn
    std::vector<HABMBlock*> subBlocks;
    std::size_t next;
  };

  // Nesting shows in the indentation up to a point: a deep tree must not cost a square of its depth.
  static std::string indent(unsigned level) { return std::string(2 * (std::min(level, 8U) + 1), ' '); }

  std::string nextId(char kind) { return kind + std::to_string(++serial_); }

  void writeBlocks() {
    std::vector<Frame> stack;
    open(stack, top_, "/", 0);
    while (!stack.empty()) {
      Frame& frame = stack.back();
      if (frame.next < frame.subBlocks.size()) {
        HABMBlock const* sub = frame.subBlocks[frame.next++];
        std::string path = HABMPath::terminate(frame.path) + sub->getInstanceName();
        open(stack, *sub, std::move(path), frame.level + 1);
        continue;
      }
      // Every node below the block is named by now, so that its connections find their ends.
      if (frame.contents) {
        collectEdges(*frame.block, frame.path);
      }
      out_ << indent(frame.level) << "}\n";
      stack.pop_back();
    }
  }

  void open(std::vector<Frame>& stack, HABMBlock const& block, std::string path, unsigned level) {
    bool const contents = !options_.depth || level < *options_.depth;
    std::vector<HABMBlock*> subBlocks = block.getSubBlocks();
    std::string label = block.getInstanceName().empty()
                            ? block.getModuleName()
                            : block.getInstanceName() + "\n(" + block.getModuleName() + ")";
    if (!contents && !subBlocks.empty()) {
      label += "\n" + std::to_string(subBlocks.size()) + " sub-block" + (subBlocks.size() == 1 ? "" : "s") +
               " not drawn";
      subBlocks.clear();
    }
    std::string const pad = indent(level);
    out_ << pad << "subgraph cluster_" << nextId('b') << " {\n"
         << pad << "  label=" << quoted(label) << "; tooltip=" << quoted(path) << "; style=\"rounded"
         << (level == 0 ? ",bold" : "") << "\";\n";
    // A block without ports or sub-blocks would otherwise vanish from the picture.
    out_ << pad << "  " << nextId('a') << " [shape=point, style=invis];\n";
    std::string const prefix = HABMPath::terminate(path);
    for (HABMPort const* port : block.getPorts()) {
      std::string text = port->getPortName();
      if (!port->isWirePort()) {
        text += " [" + std::to_string(port->getPortLeft()) + ":" + std::to_string(port->getPortRight()) + "]";
      }
      node(pad, port, 'p', text, prefix + port->getPortName(),
           std::string("shape=box, style=\"rounded,filled") +
               (port->getPortDirection() == HABMPort::DIR_PHANTOM ? ",dashed" : "") + "\", fillcolor=\"" +
               portFill(port->getPortDirection()) + "\"");
    }
    for (HABMInterface const* iface : block.getInterfaces()) {
      node(pad, iface, 'i',
           iface->getInterfaceName() + "\n" + HABMInterface::decodeInterfaceMode(iface->getInterfaceMode()) +
               " " + busName(iface->getInterfaceVlnv()),
           prefix + iface->getInterfaceName(), "shape=hexagon, style=filled, fillcolor=\"#e0e7ff\"");
    }
    if (options_.noc) {
      for (HABMNocInterface const* iface : block.getNocInterfaces(false)) {
        node(pad, iface, 'n',
             iface->getName() + "\n" + HABMNocInterface::decodeNocMode(iface->getNocMode()) + " " +
                 HABMNocInterface::decodeNocProtocol(iface->getNocProtocol()) + " " +
                 HABMNocInterface::decodeNocCategory(iface->getNocCategory()),
             prefix + iface->getName(), "shape=octagon, style=filled, fillcolor=\"#fde68a\"");
      }
    }
    stack.push_back({&block, std::move(path), level, contents, std::move(subBlocks), 0});
  }

  void node(std::string const& pad, void const* object, char kind, std::string const& label,
            std::string const& path, std::string const& style) {
    std::string const& id = ids_[object] = nextId(kind);
    out_ << pad << "  " << id << " [label=" << quoted(label) << ", tooltip=" << quoted(path) << ", " << style
         << "];\n";
  }

  // The node of a connection's end: the object's own when it is drawn, else one loose node per path,
  // red when the path names nothing.
  std::string end(void const* object, std::string const& path) {
    if (object != nullptr) {
      auto const drawn = ids_.find(object);
      if (drawn != ids_.end()) {
        return drawn->second;
      }
    }
    auto const known = looseIds_.find(path);
    if (known != looseIds_.end()) {
      return known->second;
    }
    std::string const& id = looseIds_[path] = nextId('x');
    edges_ += "  " + id + " [shape=plaintext, label=" + quoted(object == nullptr ? path + " ?" : path) +
              ", tooltip=" + quoted(path) + ", fontcolor=\"" + (object == nullptr ? "#b91c1c" : "#6b7280") +
              "\"];\n";
    return id;
  }

  void edge(std::string const& from, std::string const& to, std::string const& style) {
    edges_ += "  " + from + " -> " + to + " [" + style + "];\n";
  }

  void collectEdges(HABMBlock const& block, std::string const& path) {
    std::string const prefix = HABMPath::terminate(path);
    for (HABMPortConnection const* net : block.getPortConnections()) {
      std::string const source = net->getSourcePath(false);
      if (source.empty()) {
        continue;
      }
      std::string const from = end(net->getSourcePort(), prefix + source);
      std::string const style = net->getConnectionType() == HABMPortConnection::HARD
                                    ? "color=\"#374151\", style=bold"
                                    : "color=\"#6b7280\"";
      for (std::string const& target : net->getTargetPaths(false)) {
        edge(from, end(block.findPort(target, true), prefix + target), style);
      }
    }
    for (HABMInterfaceConnection const* link : block.getInterfaceConnections()) {
      edge(end(link->getSourceInterface(), prefix + link->getSourcePath(false)),
           end(link->getTargetInterface(), prefix + link->getTargetPath(false)),
           "color=\"#4f46e5\", penwidth=2");
    }
    if (!options_.noc) {
      return;
    }
    for (HABMNocConnection const* link : block.getNocConnections(false)) {
      edge(end(link->getSourceNocInterface(), prefix + link->getSourcePath(false)),
           end(link->getTargetNocInterface(), prefix + link->getTargetPath(false)), nocStyle(*link));
    }
  }

  // A link on paths takes their colours and is dashed when each of them is incomplete; a link on none
  // is grey and dotted.
  std::string nocStyle(HABMNocConnection const& link) const {
    auto const on = pathsOf_.find(&link);
    if (on == pathsOf_.end()) {
      return "color=\"#9ca3af\", style=dotted, penwidth=2, tooltip=\"on no NoC path\"";
    }
    std::string colours;
    std::string names;
    std::vector<char const*> used;
    bool complete = false;
    for (std::size_t p : on->second) {
      complete = complete || paths_[p].isCompletePath();
      names += (names.empty() ? "P" : ", P") + std::to_string(p + 1);
      char const* colour = kPathColours[p % kPathColours.size()];
      if (used.size() < kMaxColoursPerLink && std::find(used.begin(), used.end(), colour) == used.end()) {
        used.push_back(colour);
        colours += (colours.empty() ? "" : ":") + std::string(colour);
      }
    }
    return "color=\"" + colours + "\", penwidth=2, tooltip=" + quoted(names) +
           (complete ? "" : ", style=dashed");
  }

  // One line per NoC path in its colour; an incomplete one says what it lacks.
  void writeLegend() {
    if (paths_.empty()) {
      return;
    }
    out_ << "  subgraph cluster_legend {\n"
         << "    label=\"NoC paths\"; style=dashed; node [shape=plaintext, height=0.2, margin=0.02];\n";
    for (std::size_t p = 0; p < paths_.size(); ++p) {
      HABMNocPath const& path = paths_[p];
      std::string text = "P" + std::to_string(p + 1) + ": ";
      std::string separator;
      for (HABMNocInterface const* iface : path.getNocInterfaces()) {
        text += separator + iface->getPath();
        separator = " -> ";
      }
      if (!path.isCompletePath()) {
        std::vector<char const*> lacks;
        if (path.getNmuInterface() == nullptr) {
          lacks.push_back("no NMU");
        }
        if (path.getNsuInterface() == nullptr) {
          lacks.push_back("no NSU");
        }
        if (path.getPrimaryConnection() == nullptr) {
          lacks.push_back("no primary link");
        }
        text += "  (incomplete:";
        for (std::size_t k = 0; k < lacks.size(); ++k) {
          text += std::string(k == 0 ? " " : ", ") + lacks[k];
        }
        text += ")";
      }
      out_ << "    " << nextId('l') << " [label=" << quoted(text) << ", fontcolor=\""
           << kPathColours[p % kPathColours.size()] << "\"];\n";
    }
    out_ << "  }\n";
  }

  std::ostream& out_;
  HABMBlock const& top_;
  DotOptions const& options_;
  std::size_t serial_ = 0;
  std::string edges_;
  // Looked up only, never walked: the text's order is the tree's.
  std::unordered_map<void const*, std::string> ids_;
  std::unordered_map<std::string, std::string> looseIds_;
  std::vector<HABMNocPath> paths_;
  std::unordered_map<HABMNocConnection const*, std::vector<std::size_t>> pathsOf_;
};

}  // namespace

void writeDot(std::ostream& out, HABMBlock const& block, DotOptions const& options) {
  DotWriter(out, block, options).write();
}

}  // namespace bmtool
