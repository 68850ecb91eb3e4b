#include "Tool.h"

#include "Errors.h"
#include "commands/CommandLine.h"
#include "output/Printing.h"

#include <new>
#include <ostream>
#include <string>

namespace Vell::Tool {

namespace {

/// Runs each kind of command.
struct Runner {
    std::istream& in;
    std::ostream& out;
    int status = succeeded;

    void operator()(const PrintText& print) const { out << print.text; }
    void operator()(const RenderOptions& options) const { render(options, in); }
    void operator()(const InfoOptions& options) const { printInfo(options, out); }
    void operator()(const FallbackOptions& options) const { printFallback(options, in, out); }
    void operator()(const CacheStatsOptions& options) const { printCacheStats(options, in, out); }
    void operator()(const CompareOptions& options) {
        status = comparePictures(options, out) ? succeeded : different;
    }
    void operator()(const DemoOptions& options) const { writeDemo(options); }
    void operator()(const SpecimenOptions& options) const { writeSpecimen(options); }
    void operator()(const AnalysisOptions& options) const { printAnalysis(options, in, out); }
};

void flush(std::ostream& out) {
    if (!out.flush()) {
        throw ToolError("cannot write to standard output");
    }
}

int report(std::ostream& err, const std::string& message, int status) {
    err << "fontengine: " << makeOneLine(message) << '\n';
    return status;
}

} // namespace

int runTool(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err) {
    try {
        Runner runner{in, out};
        std::visit(runner, parseCommandLine(argc, argv));
        flush(out);
        return runner.status;
    } catch (const UsageError& error) {
        return report(err, error.what(), wrongUse);
    } catch (const std::bad_alloc&) {
        return report(err, "out of memory", failed);
    } catch (const std::exception& error) {
        return report(err, error.what(), failed);
    }
}

} // namespace Vell::Tool
