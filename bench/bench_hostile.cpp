// Hostile documents, each parsed in a process of its own under a 4 GiB address-space limit, through
// ParseXMLDoc (with and without validation) and through CreateXMLIChannelFromMemory: the corpus's hostile
// folder and generated inputs (quadratic blow-up at 10,000, 40,000 and 100,000 references, in content and in
// an attribute, parameter-entity bombs between the DTD's declarations, 100,000- and 1,000,000-deep nesting,
// a 50 MB attribute). Prints the outcome, the processor
// time and the peak memory of every run; a hostile input must end within 2 s and 256 MB, the legitimate large
// ones are only reported, with their time against raw Xerces-C++ as ratio lines. Exits with 1 when a
// hostile input took more, or a process did not end by itself.
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double gCpuLimitSeconds = 2.0;
constexpr long gMemoryLimitKiB = 256 * 1024;
constexpr rlim_t gAddressSpace = rlim_t{4} << 30;
constexpr unsigned gTimeoutSeconds = 120;

struct Input {
    std::string name;
    std::function<std::string()> bytes; // made in the child, so that the parent stays small
    std::string folder;                 // for corpus files: read by location from this working directory
    bool legitimate = false;
};

std::string Quadratic(std::size_t count, bool inAttribute) {
    std::string text = "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED><!ENTITY e \"" +
                       std::string(count, 'x') + "\">]>\n";
    text += inAttribute ? "<r a=\"" : "<r>";
    for (std::size_t index = 0; index < count; ++index) {
        text += "&e;";
    }
    return text + (inAttribute ? "\"/>" : "</r>");
}

std::string Nested(std::size_t depth) {
    std::string text;
    text.reserve(depth * 7 + 2);
    for (std::size_t index = 0; index < depth; ++index) {
        text += "<a>";
    }
    for (std::size_t index = 0; index < depth; ++index) {
        text += "</a>";
    }
    return text;
}

std::string LongAttribute(std::size_t bytes) {
    return "<r a=\"" + std::string(bytes, 'v') + "\"/>";
}

// Parameter entities doubled `levels` times and expanded between the DTD's declarations, each level
// twice the one below; the innermost one is `innermost` (empty, or markup such as a comment).
std::string ParameterBomb(int levels, std::string const& innermost) {
    std::string text = "<!DOCTYPE r [\n<!ENTITY % p0 \"" + innermost + "\">\n";
    for (int level = 1; level <= levels; ++level) {
        std::string const below = "&#37;p" + std::to_string(level - 1) + ";";
        text += "<!ENTITY % p" + std::to_string(level) + " \"" + below + below + "\">\n";
    }
    return text + "%p" + std::to_string(levels) + ";\n]>\n<r/>";
}

std::string ReadFile(std::string const& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::vector<Input> Inputs() {
    std::vector<Input> inputs;
    for (std::size_t const count : {10'000, 40'000, 100'000}) {
        for (bool const inAttribute : {false, true}) {
            inputs.push_back(
                {"quadratic-" + std::to_string(count) + (inAttribute ? "-attribute" : "-content"),
                 [=] { return Quadratic(count, inAttribute); }, "", false});
        }
    }
    inputs.push_back({"entity-100KB-x10000-content",
                      [] {
                          std::string text = Quadratic(100'000, false);
                          return text.erase(text.find("<r>") + 3, 270'000);
                      },
                      "", false});
    inputs.push_back({"parameter-bomb-empty-2^40", [] { return ParameterBomb(40, ""); }, "", false});
    inputs.push_back(
        {"parameter-bomb-comment-2^40", [] { return ParameterBomb(40, "<!--lol-->"); }, "", false});
    inputs.push_back({"nesting-100000", [] { return Nested(100'000); }, "", false});
    inputs.push_back({"nesting-1000000", [] { return Nested(1'000'000); }, "", true});
    inputs.push_back({"attribute-50MB", [] { return LongAttribute(50'000'000); }, "", true});
    std::filesystem::path const corpus = std::filesystem::path(TAVO_CORPUS_DIR) / "hostile";
    for (char const* folder : {"authored", "libxml2-recurse"}) {
        std::error_code error;
        for (auto const& entry : std::filesystem::directory_iterator(corpus / folder, error)) {
            if (entry.path().extension() == ".xml") {
                std::string const path = entry.path().string();
                inputs.push_back({entry.path().filename().string(), [=] { return ReadFile(path); },
                                  (corpus / folder).string()});
            }
        }
    }
    return inputs;
}

// One parse by `road` in this process; the outcome as a word.
std::string ParseOnce(Input const& input, std::string const& road) {
    if (!input.folder.empty()) {
        std::filesystem::current_path(input.folder);
    }
    std::string const bytes = input.bytes();
    auto const* const data = reinterpret_cast<unsigned char const*>(bytes.data());
    auto const size = static_cast<unsigned int>(bytes.size());
    if (road == "raw") {
        xercesc::XercesDOMParser parser;
        xercesc::MemBufInputSource source(data, size, "raw");
        try {
            parser.parse(source);
        } catch (...) {
            return "failed";
        }
        return parser.getDocument() != nullptr ? "parsed" : "failed";
    }
    if (road == "channel") {
        Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(data, size, Tavo::XMLNoTopLevelTag,
                                                                          TavoXML::ReturnNullOnError);
        bool const parsed = channel != nullptr;
        TavoXML::DisposeXMLIChannel(channel);
        return parsed ? "parsed" : "failed";
    }
    // "parse" as the channels do; "expand" without validation, which expands every declared entity.
    auto const scheme = road == "parse" ? ValidatingXMLParser::ValSchemes::Val_Auto
                                        : ValidatingXMLParser::ValSchemes::Val_Never;
    NodeLocations table;
    Tavo::UniString message;
    xercesc::DOMDocument* const document =
        input.folder.empty()
            ? ParseXMLDoc(data, size, scheme, true, Tavo::UniString("memory"), &table, nullptr, &message)
            : ParseXMLDoc(Vesk::Location(std::filesystem::path(input.name).c_str()), scheme, true, &table,
                          nullptr, &message);
    if (document == nullptr) {
        std::unique_ptr<char[]> const text(message.CopyUTF8());
        return std::string("failed: ") + std::string(text.get()).substr(0, 60);
    }
    document->release();
    return "parsed";
}

struct Measure {
    std::string outcome;
    double cpuSeconds = 0;
    long peakKiB = 0;
};

Measure RunChild(Input const& input, std::string const& road) {
    int ends[2];
    if (pipe(ends) != 0) {
        return {"no pipe"};
    }
    std::fflush(nullptr);
    pid_t const child = fork();
    if (child == 0) {
        close(ends[0]);
        rlimit const space{gAddressSpace, gAddressSpace};
        setrlimit(RLIMIT_AS, &space);
        alarm(gTimeoutSeconds);
        std::string const outcome = ParseOnce(input, road);
        ssize_t const written = write(ends[1], outcome.data(), outcome.size());
        _exit(written < 0 ? 1 : 0);
    }
    close(ends[1]);
    std::string outcome;
    char buffer[256];
    ssize_t count = 0;
    while ((count = read(ends[0], buffer, sizeof buffer)) > 0) {
        outcome.append(buffer, static_cast<std::size_t>(count));
    }
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (WIFSIGNALED(status)) {
        outcome = "killed by signal " + std::to_string(WTERMSIG(status));
    }
    return {outcome,
            static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6,
            usage.ru_maxrss};
}

} // namespace

int main() {
    xercesc::XMLPlatformUtils::Initialize();
    bool fine = true;
    std::vector<std::string> ratios;
    std::printf("%-44s %-8s %8s %9s  %s\n", "input", "road", "cpu s", "peak MB", "outcome");
    for (Input const& input : Inputs()) {
        for (char const* road : {"parse", "expand", "channel"}) {
            Measure const measure = RunChild(input, road);
            bool const ended = measure.outcome.rfind("killed", 0) != 0 && !measure.outcome.empty();
            bool const within = measure.cpuSeconds <= gCpuLimitSeconds && measure.peakKiB <= gMemoryLimitKiB;
            char const* const verdict = !ended             ? "DID NOT END"
                                        : within           ? ""
                                        : input.legitimate ? "(large)"
                                                           : "OVER";
            fine = fine && ended && (within || input.legitimate);
            std::printf("%-44s %-8s %8.2f %9.1f  %s %s\n", input.name.c_str(), road, measure.cpuSeconds,
                        static_cast<double>(measure.peakKiB) / 1024.0, measure.outcome.c_str(), verdict);
            if (input.legitimate && std::string(road) == "parse") {
                Measure const raw = RunChild(input, "raw");
                std::printf("%-44s %-8s %8.2f %9.1f  %s\n", input.name.c_str(), "raw", raw.cpuSeconds,
                            static_cast<double>(raw.peakKiB) / 1024.0, raw.outcome.c_str());
                if (raw.cpuSeconds > 0) {
                    ratios.push_back("ratio hostile_" + input.name + " " +
                                     std::to_string(measure.cpuSeconds / raw.cpuSeconds));
                }
            }
        }
    }
    for (std::string const& line : ratios) {
        std::printf("%s\n", line.c_str());
    }
    xercesc::XMLPlatformUtils::Terminate();
    return fine ? 0 : 1;
}
