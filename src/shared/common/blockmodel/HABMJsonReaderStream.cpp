// HABMJsonReaderStream.cpp: the streamed read of a fresh top block.
//
// A file holds most of its bytes in sub-blocks, and a block's own members (written before its sub-blocks)
// are all that its read needs before them. So the parser's events build one block at a time into a small
// document that is read and emptied at once, and the text already parsed is handed back to the system as
// the parse goes: neither the whole document nor the whole text is ever held beside the model. A block
// whose first "contents" object opens with a "sub_blocks" object is read in two parts, its head when the
// sub-blocks begin and its tail when the block ends; every other block is read whole when it ends, by the
// same functions as a whole document. Since each value is read where the whole-document walk reads it,
// messages and results are the same, on one condition: a member that the head reads may not come after
// the sub-blocks. A file that breaks it (or whose contents hold members before the sub-blocks, or that
// fails to parse) is read again as a whole document, and only that read's messages are let through.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMJsonUtils.h"
#include "blockmodel/detail/HABMFileWrite.h"
#include "blockmodel/detail/HABMJsonValue.h"
#include "blockmodel/detail/HABMKinds.h"
#include "isl/iostreams/filtering_stream.h"
#include "msg/ComMsgMgr.h"

#include <rapidjson/document.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <istream>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using habm_detail::ChildKind;
using habm_detail::Kind;

namespace {

using Keys = HABMJsonUtils;

// The text of a file, in memory of its own so that the pages the parser has left behind can be handed back
// while the model grows.
class TextBuffer {
 public:
  TextBuffer() = default;
  TextBuffer(TextBuffer const&) = delete;
  TextBuffer& operator=(TextBuffer const&) = delete;
  ~TextBuffer() {
    if (data_ != nullptr) {
      ::munmap(data_, capacity_);
    }
  }

  char* data() { return data_; }

  /// Reads the whole stream, then ends the text in a NUL; false when the stream broke off.
  bool readAll(std::istream& in, std::size_t expected) {
    constexpr std::size_t kChunk = 1 << 16;
    reserve(expected + 1);
    for (;;) {
      if (capacity_ - size_ == 1) {
        reserve(size_ + kChunk);
      }
      in.read(data_ + size_, static_cast<std::streamsize>(capacity_ - size_ - 1));
      size_ += static_cast<std::size_t>(in.gcount());
      if (!in) {
        break;
      }
    }
    data_[size_] = '\0';
    return !in.bad();
  }

  /// Hands back the whole pages before `offset`, which nothing reads again.
  void release(std::size_t offset) {
    std::size_t const end = offset / pageSize() * pageSize();
    if (end >= released_ + kReleaseStep) {
      ::madvise(data_ + released_, end - released_, MADV_DONTNEED);
      released_ = end;
    }
  }

 private:
  static constexpr std::size_t kReleaseStep = std::size_t{1} << 20;
  static std::size_t pageSize() {
    static auto const size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return size;
  }
  void reserve(std::size_t wanted) {
    if (wanted <= capacity_) {
      return;
    }
    std::size_t const capacity = (std::max(wanted, capacity_ * 2) + pageSize() - 1) / pageSize() * pageSize();
    void* const grown = data_ == nullptr ? ::mmap(nullptr, capacity, PROT_READ | PROT_WRITE,
                                                  MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)
                                         : ::mremap(data_, capacity_, capacity, MREMAP_MAYMOVE);
    if (grown == MAP_FAILED) {
      throw std::bad_alloc();
    }
    data_ = static_cast<char*>(grown);
    capacity_ = capacity;
  }

  char* data_ = nullptr;
  std::size_t capacity_ = 0;
  std::size_t size_ = 0;
  std::size_t released_ = 0;
};

// The builder's work stack: one piece of memory kept from block to block, where the document would free
// its stack after each block and allocate it again for the next.
class KeptStackAllocator {
 public:
  [[maybe_unused]] static constexpr bool kNeedFree = true;
  void* Malloc(std::size_t size) { return Realloc(nullptr, 0, size); }
  void* Realloc(void* original, std::size_t originalSize, std::size_t newSize) {
    if (newSize > size_) {
      auto grown = std::make_unique<char[]>(newSize);
      if (original != nullptr) {
        std::memcpy(grown.get(), original, originalSize);
      }
      buffer_ = std::move(grown);
      size_ = newSize;
    }
    return buffer_.get();
  }
  static void Free(void*) {}

 private:
  std::unique_ptr<char[]> buffer_;
  std::size_t size_ = 0;
};

using Builder =
    rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<>, KeptStackAllocator>;

bool sameKey(char const* text, rapidjson::SizeType length, std::string const& key) {
  return length == key.size() && std::memcmp(text, key.data(), length) == 0;
}

// The members of a block that its head reads, as bits.
unsigned headKeyBit(char const* text, rapidjson::SizeType length) {
  static std::string const& (*const kKeys[])() = {
      &Keys::STR_MODULE_NAME,  &Keys::STR_VLNV,          &Keys::STR_ENABLEMENT,
      &Keys::STR_BASE_ADDRESS, &Keys::STR_VALID,         &Keys::STR_LOCK,
      &Keys::STR_TRANSPARENT,  &Keys::STR_CONFIGURATION, &Keys::STR_BOUNDARY};
  for (unsigned i = 0; i < std::size(kKeys); ++i) {
    if (sameKey(text, length, kKeys[i]())) {
      return 1U << i;
    }
  }
  return 0;
}

}  // namespace

class HABMJsonReader::Stream {
 public:
  Stream(HABMJsonReader const& reader, HABMBlock& top, TextBuffer& text, rapidjson::InsituStringStream& input)
      : reader_(reader),
        poolBuffer_(new char[kPoolBytes]),
        pool_(poolBuffer_.get(), kPoolBytes),
        builder_(&pool_, kStackBytes, &stackAllocator_),
        top_(top),
        text_(text),
        input_(input) {}

  bool Null() {
    return scalar([](Builder& d) { return d.Null(); });
  }
  bool Bool(bool b) {
    return scalar([b](Builder& d) { return d.Bool(b); });
  }
  bool Int(int i) {
    return scalar([i](Builder& d) { return d.Int(i); });
  }
  bool Uint(unsigned u) {
    return scalar([u](Builder& d) { return d.Uint(u); });
  }
  bool Int64(int64_t i) {
    return scalar([i](Builder& d) { return d.Int64(i); });
  }
  bool Uint64(uint64_t u) {
    return scalar([u](Builder& d) { return d.Uint64(u); });
  }
  bool Double(double v) {
    return scalar([v](Builder& d) { return d.Double(v); });
  }
  bool RawNumber(char const* text, rapidjson::SizeType length, bool copy) {
    return scalar([&](Builder& d) { return d.RawNumber(text, length, copy); });
  }
  bool String(char const* text, rapidjson::SizeType length, bool copy) {
    return scalar([&](Builder& d) { return d.String(text, length, copy); });
  }
  bool Key(char const* text, rapidjson::SizeType length, bool copy) {
    if (skipping_ != 0) {
      return true;
    }
    return building_ != 0 ? builder_.Key(text, length, copy) : structuralKey(text, length, copy);
  }
  bool StartObject() { return start(true); }
  bool StartArray() { return start(false); }
  bool EndObject(rapidjson::SizeType members) {
    if (skipping_ != 0) {
      return endSkipped();
    }
    if (building_ != 0) {
      --building_;
      return builder_.EndObject(members);
    }
    return endStructural();
  }
  bool EndArray(rapidjson::SizeType elements) {
    if (skipping_ != 0) {
      return endSkipped();
    }
    --building_;  // arrays are only ever built or passed over
    return builder_.EndArray(elements);
  }

  /// After a clean parse: the read's result, with the message of a file without a top block.
  bool finish() const {
    if (!topMet_) {
      Keys::getJsonValue(rapidjson::Value(), Keys::STR_TOP_BLOCK(), true);
      return false;
    }
    return result_;
  }

 private:
  static constexpr std::size_t kPoolBytes = 1 << 16;
  static constexpr std::size_t kStackBytes = 1 << 12;

  // The objects that steer the read: the document, a block's object, its first contents, the sub-blocks
  // of those. Every other value is built into the block being read, or passed over.
  enum class Role : std::uint8_t { ROOT, BLOCK, CONTENTS, SUB_BLOCKS };
  // What the next value is, after a key of one of those.
  enum class Next : std::uint8_t { ROOT, SKIP, BUILD, TOP_BLOCK, SUB_BLOCK, CONTENTS, SUB_BLOCKS };

  struct Level {
    Role role;
    std::uint32_t frame;        // the block read
    rapidjson::SizeType built;  // members handed to the builder, for BLOCK and CONTENTS
  };

  // A block whose object is open.
  struct Frame {
    HABMBlock* block;
    unsigned headKeys = 0;      // the head's members met before the sub-blocks
    bool contentsMet = false;   // its first "contents"
    bool subBlocksMet = false;  // the first "sub_blocks" of those
    bool split = false;         // read in two parts: the head was read when the sub-blocks began
    bool headRead = false;      // and it succeeded
    bool subBlocksRead = true;  // every sub-block so far succeeded
  };

  template <class Event>
  bool scalar(Event event) {
    if (skipping_ != 0) {
      return true;
    }
    if (building_ != 0) {
      return event(builder_);
    }
    switch (next_) {
      case Next::SUB_BLOCKS:
        keepSubBlocksKey();
        return event(builder_);
      case Next::BUILD:
      case Next::CONTENTS:
        ++levels_.back().built;
        return event(builder_);
      case Next::TOP_BLOCK:
      case Next::SUB_BLOCK:
        notAnObject(next_);
        break;
      case Next::ROOT:
      case Next::SKIP:
        break;
    }
    return true;
  }

  // "sub_blocks" whose value is no object is an ordinary member of the contents.
  void keepSubBlocksKey() {
    ++levels_.back().built;
    std::string const& key = Keys::STR_SUB_BLOCKS();
    builder_.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()), true);
  }

  bool structuralKey(char const* text, rapidjson::SizeType length, bool copy);
  bool start(bool object);
  bool endStructural();
  bool endSkipped() {
    if (--skipping_ == 0 && skippedSubBlocks_) {
      skippedSubBlocks_ = false;
      return builder_.StartObject();  // the members after the sub-blocks
    }
    return true;
  }
  // The head of a block, read when its sub-blocks begin; false when the contents hold members before them,
  // which the tail would need after the text that holds them is gone.
  bool split(Level const& blockLevel, Level const& contentsLevel);
  // A top block or a sub-block whose value is not an object reads as such a block does: its head fails.
  void notAnObject(Next next);
  void blockRead(bool ok);
  bool readTail(Frame const& frame);
  void populate() {
    auto const done = [](Builder&) { return true; };
    builder_.Populate(done);
  }
  // Empties the builder; what it held was the last to point into the text parsed so far.
  void clearBuilder() {
    builder_.SetNull();
    pool_.Clear();
    text_.release(input_.Tell());
  }

  HABMJsonReader const& reader_;
  std::unique_ptr<char[]> poolBuffer_;
  rapidjson::MemoryPoolAllocator<> pool_;
  KeptStackAllocator stackAllocator_;
  Builder builder_;
  HABMBlock& top_;
  TextBuffer& text_;
  rapidjson::InsituStringStream& input_;
  std::vector<Level> levels_;
  std::vector<Frame> frames_;
  unsigned building_ = 0;  // depth inside a value handed to the builder
  unsigned skipping_ = 0;  // depth inside a value passed over
  bool skippedSubBlocks_ = false;
  Next next_ = Next::ROOT;
  std::string subBlockName_;
  bool topMet_ = false;
  bool result_ = false;
};

bool HABMJsonReader::Stream::structuralKey(char const* text, rapidjson::SizeType length, bool copy) {
  Level const& level = levels_.back();
  switch (level.role) {
    case Role::ROOT:
      next_ = !topMet_ && sameKey(text, length, Keys::STR_TOP_BLOCK()) ? Next::TOP_BLOCK : Next::SKIP;
      topMet_ = topMet_ || next_ == Next::TOP_BLOCK;
      return true;
    case Role::BLOCK: {
      Frame& frame = frames_[level.frame];
      unsigned const head = headKeyBit(text, length);
      if (frame.split) {
        // The head was read without this member: only the whole document reads the block right.
        next_ = Next::SKIP;
        return (head & ~frame.headKeys) == 0;
      }
      frame.headKeys |= head;
      next_ = Next::BUILD;
      if (!frame.contentsMet && sameKey(text, length, Keys::STR_CONTENTS())) {
        frame.contentsMet = true;
        next_ = Next::CONTENTS;
      }
      return builder_.Key(text, length, copy);
    }
    case Role::CONTENTS: {
      Frame& frame = frames_[level.frame];
      if (!frame.split && !frame.subBlocksMet && sameKey(text, length, Keys::STR_SUB_BLOCKS())) {
        frame.subBlocksMet = true;
        next_ = Next::SUB_BLOCKS;  // the key goes to the builder only if the value is not an object
        return true;
      }
      next_ = Next::BUILD;
      return builder_.Key(text, length, copy);
    }
    case Role::SUB_BLOCKS:
      subBlockName_.assign(text, length);
      next_ = Next::SUB_BLOCK;
      return true;
  }
  return true;
}

bool HABMJsonReader::Stream::start(bool object) {
  // Beyond this the whole-document read refuses the file, and says why.
  if (levels_.size() + building_ + skipping_ >= MAX_NESTING) {
    return false;
  }
  if (skipping_ != 0) {
    ++skipping_;
    return true;
  }
  if (building_ != 0) {
    ++building_;
    return object ? builder_.StartObject() : builder_.StartArray();
  }
  std::uint32_t const frame = levels_.empty() ? 0 : levels_.back().frame;
  switch (next_) {
    case Next::ROOT:
      if (object) {
        levels_.push_back({Role::ROOT, 0, 0});
      } else {
        skipping_ = 1;
      }
      return true;
    case Next::SKIP:
      skipping_ = 1;
      return true;
    case Next::CONTENTS:
      if (object) {
        ++levels_.back().built;
        levels_.push_back({Role::CONTENTS, frame, 0});
        return builder_.StartObject();
      }
      break;
    case Next::SUB_BLOCKS:
      if (object) {
        if (!split(levels_[levels_.size() - 2], levels_.back())) {
          return false;
        }
        if (frames_[frame].headRead) {
          levels_.push_back({Role::SUB_BLOCKS, frame, 0});
        } else {
          skipping_ = 1;
          skippedSubBlocks_ = true;
        }
        return true;
      }
      keepSubBlocksKey();
      building_ = 1;
      return builder_.StartArray();
    case Next::TOP_BLOCK:
    case Next::SUB_BLOCK: {
      if (!object) {
        notAnObject(next_);
        skipping_ = 1;
        return true;
      }
      HABMBlock* block = &top_;
      if (next_ == Next::SUB_BLOCK) {
        block = Kind<ChildKind::SUB_BLOCK>::createFromFile(*frames_[frame].block, subBlockName_);
        if (block == nullptr) {
          frames_[frame].subBlocksRead = false;
          skipping_ = 1;
          return true;
        }
      }
      frames_.emplace_back();
      frames_.back().block = block;
      levels_.push_back({Role::BLOCK, static_cast<std::uint32_t>(frames_.size() - 1), 0});
      return builder_.StartObject();
    }
    case Next::BUILD:
      break;
  }
  ++levels_.back().built;
  building_ = 1;
  return object ? builder_.StartObject() : builder_.StartArray();
}

bool HABMJsonReader::Stream::split(Level const& blockLevel, Level const& contentsLevel) {
  if (contentsLevel.built != 0) {
    return false;
  }
  Frame& frame = frames_[blockLevel.frame];
  // The object as it stands: the block's members so far, the last its contents, empty so far.
  builder_.EndObject(0);
  builder_.EndObject(blockLevel.built);
  populate();
  frame.split = true;
  frame.headRead = reader_.readHead(Value(builder_), *frame.block);
  if (frame.headRead) {
    reader_.enterSubBlocks(*frame.block);
  }
  clearBuilder();
  return true;
}

void HABMJsonReader::Stream::notAnObject(Next next) {
  rapidjson::Value const none;
  if (next == Next::TOP_BLOCK) {
    result_ = reader_.readHead(Value(none), top_);
    return;
  }
  Frame& parent = frames_[levels_.back().frame];
  HABMBlock* sub = Kind<ChildKind::SUB_BLOCK>::createFromFile(*parent.block, subBlockName_);
  bool const read = sub != nullptr && reader_.readHead(Value(none), *sub);
  parent.subBlocksRead = parent.subBlocksRead && read;
}

bool HABMJsonReader::Stream::endStructural() {
  Level const level = levels_.back();
  levels_.pop_back();
  switch (level.role) {
    case Role::CONTENTS:
      builder_.EndObject(level.built);
      if (frames_[level.frame].split) {
        populate();  // the builder now holds the members after the sub-blocks, for the tail
      }
      return true;
    case Role::SUB_BLOCKS:
      return builder_.StartObject();  // the members after the sub-blocks
    case Role::BLOCK: {
      Frame const& frame = frames_.back();
      bool ok = false;
      if (frame.split) {
        ok = frame.headRead && frame.subBlocksRead && readTail(frame);
      } else {
        builder_.EndObject(level.built);
        populate();
        ok = reader_.unmarshal(Value(builder_), *frame.block);
      }
      clearBuilder();
      blockRead(ok);
      return true;
    }
    case Role::ROOT:
      break;
  }
  return true;
}

bool HABMJsonReader::Stream::readTail(Frame const& frame) {
  // The builder holds the members of the contents after the sub-blocks; the tail reads them as the
  // block's contents.
  rapidjson::Value block(rapidjson::kObjectType);
  std::string const& key = Keys::STR_CONTENTS();
  block.AddMember(rapidjson::StringRef(key.data(), key.size()), builder_, builder_.GetAllocator());
  return reader_.readTail(Value(block), *frame.block);
}

void HABMJsonReader::Stream::blockRead(bool ok) {
  frames_.pop_back();
  if (frames_.empty()) {
    result_ = ok;
  } else {
    frames_.back().subBlocksRead = frames_.back().subBlocksRead && ok;
  }
}

std::unique_ptr<HABMBlock> HABMJsonReader::readTopBlock(HUTFile const& file, std::string const& name) {
  std::string path = file.getPath();
  try {
    path = habm_detail::fullPathOf(file);
    isl::iostreams::filtering_stream<isl::iostreams::input> in(path, std::ios_base::binary);
    TextBuffer text;
    if (in.good() && text.readAll(in, habm_detail::expectedTextSize(path))) {
      auto block = HABMBlock::createTopBlock(name);
      ComMsgHold hold;
      HABMJsonReader const reader(file, MODE_REPLACE);
      rapidjson::InsituStringStream input(text.data());
      Stream stream(reader, *block, text, input);
      rapidjson::Reader parser;
      if (!parser.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag>(input, stream)
               .IsError()) {
        bool const result = stream.finish();
        hold.release();
        if (!result) {
          reportFailedRead(path);
          block.reset();
        }
        return block;
      }
    }
  } catch (...) {
    // Read again below, which reports what went wrong.
  }
  auto block = HABMBlock::createTopBlock(name);
  if (!readBlock(file, *block, MODE_REPLACE)) {
    block.reset();
  }
  return block;
}
