// The symbol that every program linking libiof refers to (through the link anchor object
// that iof::iof and -liof bring along; see cmake/IofLinkAnchor.cpp). A linker working
// --as-needed drops a shared library that no object refers to, and with it the record
// classes that register themselves while the library loads; this reference keeps it.
extern "C" {
__attribute__((visibility("default"))) extern const int iof_library_anchor;
const int iof_library_anchor = 1;
}
