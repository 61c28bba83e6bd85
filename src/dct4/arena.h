// The memory of a plan. Everything that a plan holds is in one block from the caller, and the block
// is its own allocator: its first word is the cursor, the address of the next allocation.
//
//     block                                                                block + reported size
//     | cursor | slack | Dct4Spec | heads of its lists | records, tables, workspaces ... | slack |
//                      ^ the cursor starts here, at a multiple of 32
//
// The cursor moves by multiples of 32 only, so tables and workspaces suit aligned 256-bit accesses.
// The end of the block is not recorded: the size reported for a length covers what its plan takes.
// Releases are subtractions in any order; only their total matters.
#pragma once

#include <cstdint>

namespace zvxg::dct4 {

// Packed, as the block may start at any address.
struct __attribute__((packed)) Arena {
  unsigned char* cursor;
};

constexpr uint32_t alignUp32(uint32_t bytes) { return (bytes + 31) & ~uint32_t{31}; }

// The block as an arena. The cursor is aligned by the remainder of the signed low half of the
// address. So where bit 31 of the address is set, the cursor is rounded up instead of down.
Arena* arenaStart(void* block);

void* arenaAlloc(Arena* arena, uint32_t bytes);

// Returns how far the cursor moved. The memory itself is not used.
int32_t arenaRelease(Arena* arena, const void* memory, uint32_t bytes);

// Every record starts with this; lists need it to destroy their records.
struct RecordHead {
  void (*destroy)(void* record);  // releases what the record holds, but not the record
  uint32_t size;                  // bytes that were allocated for the record
};

// A cell of a list of records. The first cell is the list itself; it exists from the start, so the
// first record needs no further cell.
struct NodeList {
  void* item;  // null in the head of an empty list
  NodeList* next;
  Arena* arena;  // where further cells come from
};

constexpr uint32_t nodeListBytes(uint32_t count) { return count * alignUp32(sizeof(NodeList)); }

NodeList* nodeListInit(NodeList* cell, Arena* arena);
NodeList* nodeListMake(Arena* arena);
void* nodeListAppend(NodeList* list, void* record);

void nodeListReleaseCells(NodeList* list);
void nodeListDestroyItems(const NodeList* list);

// Releases a list that only refers to records: the cells, then the head.
void releaseStageList(NodeList* list);

// Destroys the records of the list that owns them, then releases it.
void releaseOwningList(NodeList* list);

}  // namespace zvxg::dct4
