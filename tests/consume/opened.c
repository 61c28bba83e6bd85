/* Opens the library named by the argument at run time, lets it allocate, and prints which variant it
 * is. With OWN_MEMORY the program has its own zvxMalloc and zvxFree, and these have to be called, once
 * each. */
#ifdef _WIN32
#include <windows.h>
/* What the library imports is looked for in its own directory first. */
#define dlopen(path, flags) (void*)LoadLibraryExA(path, NULL, LOAD_WITH_ALTERED_SEARCH_PATH)
#define dlsym(library, name) (void*)GetProcAddress((HMODULE)(library), name)
#define dlclose(library) !FreeLibrary((HMODULE)(library))
#define dlerror() "the library cannot be loaded"
#else
#include <dlfcn.h>
#endif
#include <stdio.h>
#include <stdlib.h>
#include <zvxg.h>

enum {
  kOrder = 13,
  kLength = 1 << kOrder
};

#ifdef OWN_MEMORY
static int allocated, freed;

void* zvxMalloc(int32_t bytes) {
  ++allocated;
  return aligned_alloc(64, ((size_t)bytes + 63) / 64 * 64);
}

void zvxFree(void* block) {
  ++freed;
  free(block);
}
#endif

int main(int count, char** arguments) {
  static float source[kLength] = {1}, result[kLength];
  void* library = count == 2 ? dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL) : NULL;
  if (library == NULL) {
    fprintf(stderr, "opened: %s\n", count == 2 ? dlerror() : "one library is to be named");
    return 1;
  }

  /* POSIX has functions and data pointers of the same form, ISO C has no cast for it. */
  int32_t (*transform)(const float*, float*, int32_t, uint8_t*);
  *(void**)&transform = dlsym(library, "zvxgWHT_13_32f");
  /* Without a buffer it gets one for the call. An impulse has a flat spectrum. */
  if (transform == NULL || transform(source, result, zvxNoDiv, NULL) != zvxOk) return 2;
  for (int k = 0; k < kLength; ++k) {
    if (result[k] != 1) return 3;
  }
#ifdef OWN_MEMORY
  if (allocated != 1 || freed != 1) return 4;
#endif

  const VersionRecord* (*getVersion)(void);
  *(void**)&getVersion = dlsym(library, "zvxgenGetLibVersion");
  if (getVersion == NULL) return 5;
  printf("%.4s\n", getVersion()->cpuTag);
  return dlclose(library) == 0 ? 0 : 6;
}
