// HCRapidJsonFwd.h: forward declarations of the RapidJSON value types, for headers that name them without
// needing the library (as RapidJSON's own fwd.h declares them).
#pragma once

namespace rapidjson {

template <typename CharType>
struct UTF8;
class CrtAllocator;
template <typename BaseAllocator>
class MemoryPoolAllocator;
template <typename Encoding, typename Allocator>
class GenericValue;
typedef GenericValue<UTF8<char>, MemoryPoolAllocator<CrtAllocator> > Value;

}  // namespace rapidjson
