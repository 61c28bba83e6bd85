// Prints the list of exported functions, as a table that C++ includes, as JSON, or as the file by which
// a linker for Windows exports them:
//
//     interface table
//     interface json
//     interface def LIBRARY
//
// The kernels are those of the generator, each family with its entry behind it; the Walsh-Hadamard
// transforms, the DCT-IV and the version are listed here. The functions of libzvxgmany follow: what
// takes a length is there once more, for many transforms of it.

#include <cstdio>
#include <string>
#include <vector>

#include "kernel_id.h"

namespace {

using kernelgen::Direction;
using kernelgen::KernelId;
using kernelgen::Layout;
using kernelgen::Precision;

using Names = std::vector<std::string>;

struct Row {
  std::string symbol, family;
  int bits = 0;
  int first = 0, last = 0;
  Names roles = {};
  Direction direction = Direction::Forward;
  Layout layout = Layout::None;
  int sourceSize = 0, destinationSize = 0;
  bool isMany = false;
};

const char* nameOf(kernelgen::Family family) {
  switch (family) {
    case kernelgen::Family::Complex: return "Complex";
    case kernelgen::Family::Real: return "Real";
    case kernelgen::Family::Hartley: return "Hartley";
  }
  return "";
}

constexpr int kOrders = 13;

// With a plan; 2^29 and 2^30 are accepted too, as their sizes wrap around.
int longestPlan(int bits) { return 1 << (bits == 32 ? 26 : 25); }

// What a transform by its length, or by a plan, is as a function for many of them.
Row manyOf(Row row) {
  const Names arrays = {"Source",      "SourceStride",      "SourceDist",
                        "Destination", "DestinationStride", "DestinationDist"};
  Names roles = arrays;
  for (const std::string& role : row.roles) {
    if (role == "Flag" || role == "Plan") roles.push_back("Howmany");
    if (role != "Source" && role != "Destination") roles.push_back(role);
  }
  row.symbol.insert(row.symbol.rfind('_'), "_Many");
  row.roles = roles;
  row.isMany = true;
  return row;
}

std::vector<Row> makeRows() {
  std::vector<Row> rows = {{"zvxgenGetLibVersion", "Version"}};
  for (const KernelId& id : kernelgen::kernelList()) {
    const int bits = id.precision == Precision::Single ? 32 : 64;
    rows.push_back({id.symbol(),
                    nameOf(id.family),
                    bits,
                    id.length,
                    id.length,
                    {"Source", "Destination", "Flag"},
                    id.direction,
                    id.layout,
                    id.sourceSize(),
                    id.destinationSize()});
    if (id.length == kernelgen::kMaxLength) {
      rows.push_back({id.entrySymbol(),
                      nameOf(id.family),
                      bits,
                      kernelgen::kMinLength,
                      id.length,
                      {"Source", "Destination", "Selector", "Flag"},
                      id.direction,
                      id.layout});
    }
  }
  for (const int bits : {32, 64}) {
    const std::string type = "_" + std::to_string(bits) + "f";
    for (int order = 1; order <= kOrders; ++order) {
      rows.push_back({"zvxgWHT_" + std::to_string(order) + type,
                      "Wht",
                      bits,
                      order,
                      order,
                      {"Source", "Destination", "Flag", "Buffer"},
                      Direction::Forward,
                      Layout::None,
                      1 << order,
                      1 << order});
    }
    const auto add = [&](const char* name, const char* family, int first, int last, Names roles) {
      rows.push_back({name + type, family, bits, first, last, std::move(roles)});
    };
    add("zvxgWHT", "Wht", 1, kOrders, {"Source", "Destination", "Selector", "Flag", "Buffer"});
    add("zvxgWHTGetBufferSize", "Wht", 1, kOrders, {"Selector", "Size"});
    const int longest = longestPlan(bits);
    add("zvxgDCT4", "Dct4", 2, longest, {"Source", "Destination", "Plan"});
    add("zvxgDCT4GetSize", "Dct4", 2, longest, {"Selector", "Size"});
    add("zvxgDCT4Init", "Dct4", 2, longest, {"NewPlan", "Selector", "Block"});
    add("zvxgDCT4InitAlloc", "Dct4", 2, longest, {"NewPlan", "Selector"});
    add("zvxgDCT4Free", "Dct4", 2, longest, {"Plan"});
  }
  for (std::size_t i = 0, end = rows.size(); i < end; ++i) {
    const Names& roles = rows[i].roles;
    if (!roles.empty() && roles[0] == "Source" && rows[i].first != rows[i].last) {
      rows.push_back(manyOf(rows[i]));
    }
  }
  for (const char* symbol : {"zvxgManyLevel", "zvxgManyLimitLevel"}) {
    Row row = {symbol, "Level"};
    row.isMany = true;
    if (row.symbol == "zvxgManyLimitLevel") row.roles = {"Level"};
    rows.push_back(row);
  }
  return rows;
}

const char* nameOf(Direction direction) {
  return direction == Direction::Forward ? "Forward" : "Inverse";
}

const char* nameOf(Layout layout) {
  constexpr const char* kNames[] = {"None", "Ccs", "Pack", "Perm"};
  return kNames[static_cast<int>(layout)];
}

std::string joined(const Names& names, const char* before, const char* after) {
  std::string text;
  for (const std::string& name : names)
    text += (text.empty() ? "" : ", ") + (before + name) + after;
  return text;
}

void print(const Row& row, bool asTable, bool isLast) {
  std::printf(asTable ? "ZVXG_%sFUNCTION(%s, Family::%s, Direction::%s, Layout::%s, "
                        "%d, %d, %d, %d, %d, {%s})%s\n"
                      : "{\"library\": \"zvxg%s\", \"symbol\": \"%s\", \"family\": \"%s\", "
                        "\"direction\": \"%s\", \"layout\": \"%s\", \"bits\": %d, \"first\": %d, "
                        "\"last\": %d, \"source\": %d, \"destination\": %d, \"roles\": [%s]}%s\n",
              !row.isMany ? ""
              : asTable   ? "MANY_"
                          : "many",
              row.symbol.c_str(), row.family.c_str(), nameOf(row.direction), nameOf(row.layout),
              row.bits, row.first, row.last, row.sourceSize, row.destinationSize,
              (asTable ? joined(row.roles, "Role::", "") : joined(row.roles, "\"", "\"")).c_str(),
              asTable || isLast ? "" : ",");
}

}  // namespace

int main(int count, char** arguments) {
  const std::string form = count > 1 ? arguments[1] : "", library = count > 2 ? arguments[2] : "";
  const bool isDefinition = form == "def" && (library == "zvxg" || library == "zvxgmany");
  if (count > 3 || (!isDefinition && (!library.empty() || (form != "table" && form != "json")))) {
    std::fputs("usage: interface table | json | def zvxg | def zvxgmany\n", stderr);
    return 2;
  }
  const std::vector<Row> rows = makeRows();
  if (isDefinition) {
    std::puts("EXPORTS");
    for (const Row& row : rows) {
      if (row.isMany == (library == "zvxgmany")) std::puts(row.symbol.c_str());
    }
    return 0;
  }
  if (form == "json") std::puts("[");
  for (const Row& row : rows) print(row, form == "table", &row == &rows.back());
  if (form == "json") std::puts("]");
  return 0;
}
