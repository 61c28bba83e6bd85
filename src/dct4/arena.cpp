#include "dct4/arena.h"

namespace zvxg::dct4 {
namespace {

// From the block to the first place for an allocation, before it is aligned.
constexpr int kHeadBytes = 64;

}  // namespace

Arena* arenaStart(void* block) {
  auto* const arena = static_cast<Arena*>(block);
  const auto low = static_cast<int32_t>(reinterpret_cast<std::uintptr_t>(block));
  arena->cursor = static_cast<unsigned char*>(block) + kHeadBytes - low % 32;
  return arena;
}

void* arenaAlloc(Arena* arena, uint32_t bytes) {
  unsigned char* const memory = arena->cursor;
  arena->cursor = memory + static_cast<int32_t>(alignUp32(bytes));
  return memory;
}

int32_t arenaRelease(Arena* arena, const void*, uint32_t bytes) {
  const auto amount = static_cast<int32_t>(alignUp32(bytes));
  arena->cursor = arena->cursor - amount;
  return amount;
}

NodeList* nodeListInit(NodeList* cell, Arena* arena) {
  *cell = {nullptr, nullptr, arena};
  return cell;
}

NodeList* nodeListMake(Arena* arena) {
  return nodeListInit(static_cast<NodeList*>(arenaAlloc(arena, sizeof(NodeList))), arena);
}

void* nodeListAppend(NodeList* list, void* record) {
  while (list->next != nullptr) list = list->next;
  if (list->item != nullptr) {
    list->next = nodeListMake(list->arena);
    list = list->next;
  }
  list->item = record;
  return record;
}

void nodeListReleaseCells(NodeList* list) {
  for (const NodeList* cell = list->next; cell != nullptr;) {
    const NodeList* const next = cell->next;
    arenaRelease(cell->arena, cell, sizeof(NodeList));
    cell = next;
  }
}

void nodeListDestroyItems(const NodeList* list) {
  for (; list != nullptr; list = list->next) {
    auto* const record = static_cast<RecordHead*>(list->item);
    if (record == nullptr) continue;
    record->destroy(record);
    arenaRelease(list->arena, record, record->size);
  }
}

void releaseStageList(NodeList* list) {
  nodeListReleaseCells(list);
  arenaRelease(list->arena, list, sizeof(NodeList));
}

void releaseOwningList(NodeList* list) {
  nodeListDestroyItems(list);
  releaseStageList(list);
}

}  // namespace zvxg::dct4
