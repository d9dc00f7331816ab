// cvn_np_report.h - the library's assertion report, shared by the core and
// every family.
#ifndef CVN_NP_REPORT_H
#define CVN_NP_REPORT_H

namespace cvn_np {

// A precondition as the report prints it: the condition's text and the
// source line that states it.
struct check {
    const char *text;
    int line;
};

// Locks stderr for good, prints "<path>: <line> <text> -- assertion failed"
// and aborts.
[[noreturn]] void report_assertion(const char *path, int line, const char *text) noexcept;

// Ends the process with the report of `c` unless `ok`.
inline void require(bool ok, const char *path, const check &c) noexcept
{
    if (!ok) [[unlikely]]
        report_assertion(path, c.line, c.text);
}

} // namespace cvn_np

// A check stated on this line of the family's own source.
#define CVN_NP_CHECK(text) (::cvn_np::check{(text), __LINE__})

#endif // CVN_NP_REPORT_H
