// Memory of a plan. Everything that a plan holds lies in one block that the caller provides, and
// the block is its own allocator: its first word is the cursor, the address of the next allocation.
//
//     block                                                                block + reported size
//     | cursor | slack | Dct4Spec | heads of its lists | records, tables, workspaces ... | slack |
//                      ^ the cursor starts here, at a multiple of 32
//
// The cursor moves by multiples of 32 only, so tables and workspaces suit aligned 256-bit accesses.
// Nothing knows where the block ends: the size that is reported for a length covers what its plan
// takes. Releases are subtractions in any order; only their total matters.
#pragma once

#include <cstdint>

namespace zvxg::dct4 {

// Packed, as the block may start at any address.
struct __attribute__((packed)) Arena {
  unsigned char* cursor;
};

constexpr uint32_t alignUp32(uint32_t bytes) { return (bytes + 31) & ~uint32_t{31}; }

// The block as an arena. The remainder that aligns the cursor is that of the signed low half of the
// address, so where bit 31 of it is set the cursor is rounded up and not down.
Arena* arenaStart(void* block);

void* arenaAlloc(Arena* arena, uint32_t bytes);

// Gives back the amount by which the cursor moved. The memory itself is of no concern.
int32_t arenaRelease(Arena* arena, const void* memory, uint32_t bytes);

// What lists need to know of the records in them: every record starts with this.
struct RecordHead {
  void (*destroy)(void* record);  // gives back what the record holds, but not the record
  uint32_t size;                  // bytes that were asked for the record
};

// A cell of a list of records, and as its first cell the list. The head is there from the start, so
// the first record costs no cell.
struct NodeList {
  void* item;  // null in the head of an empty list
  NodeList* next;
  Arena* arena;  // where further cells come from
};

constexpr uint32_t nodeListBytes(uint32_t count) { return count * alignUp32(sizeof(NodeList)); }

NodeList* nodeListInit(NodeList* cell, Arena* arena);
NodeList* nodeListMake(Arena* arena);
void* nodeListAppend(NodeList* list, void* record);

// Null for a negative index; the index one behind the last cell must not be asked for.
void* nodeListAt(const NodeList* list, int32_t index);

void nodeListReleaseCells(NodeList* list);
void nodeListDestroyItems(const NodeList* list);

// Releases a list that only refers to records: the cells, then the head.
void releaseStageList(NodeList* list);

// Destroys the records of the list that owns them, then releases it.
void releaseOwningList(NodeList* list);

}  // namespace zvxg::dct4
