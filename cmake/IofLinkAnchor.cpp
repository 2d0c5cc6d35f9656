// Linked into every program that uses the installed libiof, through iof::iof or -liof
// (the installed libiof.so is a linker script that names this object and the library).
// It refers to libiof, so that a linker working --as-needed keeps the library even in a
// program that names no IOF class (a generic file reader built on DbMgr alone): the
// record classes register while the library loads, and DbMgr::Read needs them.
extern "C" const int iof_library_anchor;
[[gnu::used]] static const int* const volatile iof_keep_library = &iof_library_anchor;
