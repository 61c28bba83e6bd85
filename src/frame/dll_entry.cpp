// Where Windows enters a DLL of the library, instead of the start-up files of the compiler. Nothing needs
// to run when a process or a thread comes or goes: there are no constructors and no state.

extern "C" int DllMainCRTStartup(void*, unsigned long, void*) { return 1; }
