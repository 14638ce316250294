/*
 * The extension as the host loads it: dlopen by path, hand it the kernel handle (vxextent),
 * call its entry point, and destroy the instance when done.
 *
 *   vxhost::Library library;                       // libvxlocfmt.so beside the executable
 *   const vxlocfmt::FuncInfo* row = library.find(U"NLDATE");
 */
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "extension_context.h"
#include "frame/abi.h"
#include "journal.h"

namespace vxhost {

// The host's part of loading an extension: its name goes in the instance's second word, where
// the extension's formats look for their tag among the session's extensions.
void adopt_instance(vxlocfmt::Instance* instance, const char* name = "vxlocfmt");

// Where the host looks for the extension, in order: $VXLOCFMT_LIBRARY alone when it is set;
// else libvxlocfmt.so in the running program's folder (the build tree), in its ../lib (the
// installed CLI), and last the bare name, which the dynamic loader searches for in the program's
// run path (a program linked against an installed tree has that tree's library folder there),
// LD_LIBRARY_PATH and the system folders.
std::vector<std::string> library_candidates();
// The first candidate that exists as a file, else the bare name.
std::string default_library_path();

class Library {
public:
    // Throws std::runtime_error with the loader's message when the library cannot be loaded or
    // its entry point declines; the default constructor's message lists every place it looked.
    Library();
    explicit Library(const std::string& path);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    vxlocfmt::Instance* instance() const { return instance_; }
    const vxlocfmt::FuncInfo* registry() const { return instance_->registry; }
    // A row by name ("@NLDATE", "NLDATE"); names are compared as the registry writes them.
    const vxlocfmt::FuncInfo* find(std::u32string_view name) const;
    // A symbol of the loaded library, or null.
    void* symbol(const char* name) const;
    Journal* journal() const { return journal_; }  // the host's journal given to the entry

private:
    void start(const std::string& path);

    void* handle_ = nullptr;
    ExtensionContext context_;
    Journal* journal_ = nullptr;
    vxlocfmt::Instance* instance_ = nullptr;
};

}  // namespace vxhost
