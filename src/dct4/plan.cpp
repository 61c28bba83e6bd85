// Construction and dismantling of a plan, record by record. The order of allocations is fixed, so
// that the plan of a length is the same in every build.

#include "dct4/plan.h"

#include "dct4/radix.h"
#include "dct4/tables.h"
#include "zvxg.h"

namespace zvxg::dct4 {
namespace {

// The memory for a record; the caller sets its fields.
template <class Record>
Record* take(Arena* arena) {
  return static_cast<Record*>(arenaAlloc(arena, sizeof(Record)));
}

template <class T>
uint32_t bytesOf(int32_t elements) {
  return static_cast<uint32_t>(sizeof(T)) * static_cast<uint32_t>(elements);
}

void destroyNothing(void*) {}

// ---- Splits -------------------------------------------------------------------------------------

template <class T>
uint32_t tableBytes(const SplitCombine<T>& combine) {
  return static_cast<uint32_t>(combine.count * twiddleVectors(combine.radix)) * kTableVectorBytes;
}

template <class T>
int32_t initSplitCombine(void* record) {
  auto* const combine = static_cast<SplitCombine<T>*>(record);
  combine->state = stateOf(combine->radix, 2, 5);
  if (combine->state == 0) return zvxErrLength;
  combine->table = static_cast<T*>(arenaAlloc(combine->arena, tableBytes(*combine)));
  fillTwiddles(*combine);
  return zvxOk;
}

template <class T>
void destroySplitCombine(void* record) {
  const auto* const combine = static_cast<SplitCombine<T>*>(record);
  if (combine->state != 0) arenaRelease(combine->arena, combine->table, tableBytes(*combine));
  releaseOwningList(combine->allNodes);
}

template <class T>
int32_t initSplitNode(void* record);

template <class T>
void destroySplitNode(void* record) {
  const auto* const node = static_cast<SplitNode<T>*>(record);
  if (node->state == 1) {
    arenaRelease(node->arena, node->workspace, bytesOf<T>(node->rootLength3));
  }
  releaseStageList(node->combineList);
  releaseStageList(node->subList);
  releaseOwningList(node->allNodes);
}

// A column transform of length `length` below splits whose radices have the product `stride`. Its
// parent owns it through `allNodes` and runs it through `list`.
template <class T>
int32_t addSplitNode(Arena* arena, NodeList* allNodes, NodeList* list, int32_t length,
                     int32_t rootLength, int32_t doubleStride, int32_t stride) {
  auto* const node = take<SplitNode<T>>(arena);
  *node = {.head = {destroySplitNode<T>, sizeof *node},
           .init = initSplitNode<T>,
           .arena = arena,
           .allNodes = nullptr,
           .combineList = nodeListMake(arena),
           .subList = nodeListMake(arena),
           .workspace = nullptr,
           .state = 0,
           .length = length,
           .radix = 0,
           .rootLength = rootLength,
           .rootLength2 = rootLength,
           .doubleStride = doubleStride,
           .rootLength3 = rootLength,
           .stride = stride};
  node->allNodes = nodeListMake(arena);
  nodeListAppend(list, nodeListAppend(allNodes, node));
  return node->init(node);
}

template <class T>
int32_t initSplitSub(void* record) {
  auto* const sub = static_cast<SplitSub<T>*>(record);
  sub->state = stateOf(sub->subLength, 2, kLastLeafState);
  if (sub->state == 0) {
    sub->state = kNodeState;
    const int32_t status = addSplitNode<T>(sub->arena, sub->allNodes, sub->nodeList, sub->subLength,
                                           sub->rootLength, sub->nextDoubleStride, sub->nextStride);
    if (status != zvxOk) return status;
  }
  sub->scratch = nullptr;
  return zvxOk;
}

template <class T>
void destroySplitSub(void* record) {
  const auto* const sub = static_cast<SplitSub<T>*>(record);
  if (sub->state != 0) arenaRelease(sub->arena, sub->scratch, 0);
  releaseStageList(sub->nodeList);
  releaseOwningList(sub->allNodes);
}

template <class T>
int32_t initSplitNode(void* record) {
  auto* const node = static_cast<SplitNode<T>*>(record);
  Arena* const arena = node->arena;
  node->state = 1;
  if (chooseRadix(&node->radix, node->length / 2) != zvxOk) return zvxErrLength;
  const int32_t m = node->length, q = node->radix, n = node->rootLength;

  auto* const combine = take<SplitCombine<T>>(arena);
  auto* const source = take<PhaseSource<T>>(arena);
  *source = {.head = {destroyNothing, sizeof *source},
             .evaluate = evaluatePhase<T>,
             .arena = arena,
             .length = m,
             .radix = q};
  nodeListAppend(node->allNodes, source);
  *combine = {.head = {destroySplitCombine<T>, sizeof *combine},
              .init = initSplitCombine<T>,
              .arena = arena,
              .allNodes = nodeListMake(arena),
              .table = nullptr,
              .state = 0,
              .radix = q,
              .rootLength = n,
              .stride = node->stride,
              .outStride = node->doubleStride * q,
              .count = m / (2 * q),
              .rootLength2 = n,
              .halfLength = m / 2,
              .lastIndex = m - 1,
              .stride2 = node->stride,
              .subLength = m / q,
              .source = source};
  nodeListAppend(node->combineList, nodeListAppend(node->allNodes, combine));
  if (const int32_t status = combine->init(combine); status != zvxOk) return status;

  auto* const sub = take<SplitSub<T>>(arena);
  *sub = {.head = {destroySplitSub<T>, sizeof *sub},
          .init = initSplitSub<T>,
          .arena = arena,
          .allNodes = nullptr,
          .nodeList = nodeListMake(arena),
          .scratch = nullptr,
          .state = 0,
          .subLength = m / q,
          .rootLength = n,
          .rootLength2 = n,
          .nextDoubleStride = node->doubleStride * q,
          .doubleStride = node->doubleStride,
          .radix = q,
          .rootLength3 = n,
          .nextStride = node->stride * q,
          .stride = node->stride};
  sub->allNodes = nodeListMake(arena);
  nodeListAppend(node->subList, nodeListAppend(node->allNodes, sub));
  if (const int32_t status = sub->init(sub); status != zvxOk) return status;

  node->workspace = static_cast<T*>(arenaAlloc(arena, bytesOf<T>(node->rootLength3)));
  return zvxOk;
}

// ---- Input stage of the root --------------------------------------------------------------------

template <class T>
void destroyRootSub(void* record) {
  const auto* const sub = static_cast<RootSub<T>*>(record);
  if (sub->state != 0) arenaRelease(sub->arena, sub->scratch, 0);
  releaseStageList(sub->loopList);
  releaseOwningList(sub->allNodes);
}

// Makes a record of this stage: the outer one for the root, or the inner one for the outer.
template <class T>
RootSub<T>* addRootSub(Arena* arena, NodeList* allNodes, NodeList* list, Init init, int32_t length,
                       int32_t radix, int32_t laneGroups) {
  auto* const sub = take<RootSub<T>>(arena);
  *sub = {.head = {destroyRootSub<T>, sizeof *sub},
          .init = init,
          .arena = arena,
          .allNodes = nullptr,
          .loopList = nodeListMake(arena),
          .scratch = nullptr,
          .state = 0,
          .subLength = length / radix,
          .length = length,
          .lastIndex = static_cast<int32_t>(2u * length - 1),
          .rowLength = 2 * radix,
          .laneGroups = laneGroups,
          .outLength = length,
          .radix = radix};
  sub->allNodes = nodeListMake(arena);
  nodeListAppend(list, nodeListAppend(allNodes, sub));
  return sub;
}

template <class T>
int32_t initRootSubLoop(void* record) {
  auto* const loop = static_cast<RootSubLoop<T>*>(record);
  loop->state = stateOf(loop->subLength, 2, kLastLeafState);
  if (loop->state == 0) {
    loop->state = kNodeState;
    const int32_t status =
        addSplitNode<T>(loop->arena, loop->allNodes, loop->loopList, loop->subLength, loop->length,
                        loop->rowLength, loop->radix);
    if (status != zvxOk) return status;
  }
  loop->scratch = nullptr;
  return zvxOk;
}

template <class T>
int32_t initRootSub(void* record) {
  auto* const sub = static_cast<RootSub<T>*>(record);
  sub->state = sub->laneGroups % kTableLanes<T> == 0 ? 1 : 0;
  if (sub->state == 0) return zvxErrLength;
  RootSubLoop<T>* const loop =
      addRootSub<T>(sub->arena, sub->allNodes, sub->loopList, initRootSubLoop<T>, sub->length,
                    sub->radix, sub->laneGroups / kTableLanes<T>);
  if (const int32_t status = loop->init(loop); status != zvxOk) return status;
  sub->scratch = nullptr;
  return zvxOk;
}

// ---- Output stage of the root -------------------------------------------------------------------

template <class T>
uint32_t tableBytes(const RootCombineLoop<T>& loop) {
  return static_cast<uint32_t>(loop.laneRows * loop.rowLength) * kTableVectorBytes;
}

template <class T>
int32_t initRootCombineLoop(void* record) {
  auto* const loop = static_cast<RootCombineLoop<T>*>(record);
  loop->state = stateOf(loop->radix, 1, 6);
  if (loop->state == 0) return zvxErrLength;
  loop->table = static_cast<T*>(arenaAlloc(loop->arena, tableBytes(*loop)));
  fillRotations(*loop);
  return zvxOk;
}

template <class T>
void destroyRootCombineLoop(void* record) {
  const auto* const loop = static_cast<RootCombineLoop<T>*>(record);
  if (loop->state != 0) arenaRelease(loop->arena, loop->table, tableBytes(*loop));
  releaseOwningList(loop->allNodes);
}

template <class T>
int32_t initRootCombine(void* record) {
  auto* const combine = static_cast<RootCombine<T>*>(record);
  Arena* const arena = combine->arena;
  combine->state = combine->rows % kTableLanes<T> == 0 ? 1 : 0;
  if (combine->state == 0) return zvxErrLength;
  const int32_t n = combine->length, r = combine->radix, laneRows = combine->rows / kTableLanes<T>;

  auto* const loop = take<RootCombineLoop<T>>(arena);
  auto* const source = take<LaneRowsSource<T>>(arena);
  *source = {.head = {destroyNothing, sizeof *source},
             .evaluate = evaluateLaneRows<T>,
             .arena = arena,
             .rowLength = 2 * r,
             .laneRows = laneRows,
             .source = combine->source};
  nodeListAppend(combine->allNodes, source);
  *loop = {.head = {destroyRootCombineLoop<T>, sizeof *loop},
           .init = initRootCombineLoop<T>,
           .arena = arena,
           .allNodes = nodeListMake(arena),
           .table = nullptr,
           .state = 0,
           .radix = r,
           .length = n,
           .rowLength = 2 * r,
           .laneStride = kTableLanes<T> * 2 * r,
           .laneRows = laneRows,
           .outLength = n,
           .lastIndex = combine->lastIndex,
           .subLength = combine->subLength,
           .source = source};
  nodeListAppend(combine->loopList, nodeListAppend(combine->allNodes, loop));
  if (const int32_t status = loop->init(loop); status != zvxOk) return status;
  combine->scratch = nullptr;
  return zvxOk;
}

template <class T>
void destroyRootCombine(void* record) {
  const auto* const combine = static_cast<RootCombine<T>*>(record);
  if (combine->state != 0) arenaRelease(combine->arena, combine->scratch, 0);
  releaseStageList(combine->loopList);
  releaseOwningList(combine->allNodes);
}

// ---- Root ---------------------------------------------------------------------------------------

template <class T>
int32_t initSpec(void* record) {
  auto* const spec = static_cast<Dct4Spec*>(record);
  Arena* const arena = spec->arena;
  const int32_t n = spec->length;
  spec->state = stateOf(n, 2, kDirectStates<T>);
  if (spec->state != 0) {
    spec->workspace = nullptr;
    return zvxOk;
  }
  spec->state = kGeneralState<T>;
  if (chooseRadix(&spec->radix, n / 2) != zvxOk) return zvxErrLength;
  const int32_t r = spec->radix;

  auto* const combine = take<RootCombine<T>>(arena);
  auto* const source = take<RotationSource<T>>(arena);
  *source = {.head = {destroyNothing, sizeof *source},
             .evaluate = evaluateRotation<T>,
             .arena = arena,
             .rowLength = 2 * r,
             .angleDivisor = static_cast<int32_t>(8u * n),
             .rows = n / (2 * r),
             .columns = r,
             .rowStride = 2 * r};
  nodeListAppend(spec->allNodes, source);
  *combine = {.head = {destroyRootCombine<T>, sizeof *combine},
              .init = initRootCombine<T>,
              .arena = arena,
              .allNodes = nullptr,
              .loopList = nodeListMake(arena),
              .scratch = nullptr,
              .state = 0,
              .radix = r,
              .length = n,
              .rowLength = 2 * r,
              .rows = n / (2 * r),
              .outLength = n,
              .lastIndex = static_cast<int32_t>(2u * n - 1),
              .subLength = n / r,
              .source = source};
  combine->allNodes = nodeListMake(arena);
  nodeListAppend(spec->combineList, nodeListAppend(spec->allNodes, combine));
  if (const int32_t status = combine->init(combine); status != zvxOk) return status;

  RootSub<T>* const sub =
      addRootSub<T>(arena, spec->allNodes, spec->subList, initRootSub<T>, n, r, r);
  if (const int32_t status = sub->init(sub); status != zvxOk) return status;

  spec->workspace = arenaAlloc(arena, bytesOf<T>(n));
  return zvxOk;
}

// Destroys everything but the record itself. After a failed construction there is no workspace, but
// one is released all the same, so the cursor ends lower than it began. That does no harm, because
// the block is not used again.
template <class T>
void destroySpec(void* record) {
  const auto* const spec = static_cast<Dct4Spec*>(record);
  if (spec->state != 0) {
    const bool general = spec->state == kGeneralState<T>;
    arenaRelease(spec->arena, spec->workspace, general ? bytesOf<T>(spec->length) : 0);
  }
  releaseStageList(spec->combineList);
  releaseStageList(spec->subList);
  releaseOwningList(spec->allNodes);
}

}  // namespace

template <class T>
int32_t planInit(Dct4Spec** spec, int32_t length, void* block) {
  Arena* const arena = arenaStart(block);
  auto* const root = take<Dct4Spec>(arena);
  root->head.size = sizeof *root;
  root->arena = arena;
  root->workspace = nullptr;
  root->length = length;
  root->state = 0;
  root->combineList = nodeListMake(arena);
  root->subList = nodeListMake(arena);
  root->allNodes = nodeListMake(arena);
  root->head.destroy = destroySpec<T>;
  root->init = initSpec<T>;
  const int32_t status = root->init(root);
  if (status == zvxOk) {
    *spec = root;
  } else {
    planDismantle<T>(root);
  }
  return status;
}

template <class T>
void planDismantle(Dct4Spec* spec) {
  destroySpec<T>(spec);
  arenaRelease(spec->arena, spec, sizeof *spec);
}

template int32_t planInit<float>(Dct4Spec**, int32_t, void*);
template int32_t planInit<double>(Dct4Spec**, int32_t, void*);
template void planDismantle<float>(Dct4Spec*);
template void planDismantle<double>(Dct4Spec*);

}  // namespace zvxg::dct4
