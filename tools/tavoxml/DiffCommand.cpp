// tavoxml diff: the first difference between two documents, as the library's comparison finds it, with
// the source line of each differing node so that an editor can jump there.
#include "tools/tavoxml/Commands.hpp"
#include "tools/tavoxml/Input.hpp"

#include <xercesc/dom/DOMNode.hpp>

#include <cstdio>
#include <memory>

namespace Tool {

namespace {

// Names compared exactly and every value compared as text with regard to case, on top of either ready
// options class.
template <class Base>
class CaseSensitiveOptions : public Base {
public:
    TavoXML::IXMLCompareOptions* Clone() const override { return new CaseSensitiveOptions(*this); }
    bool AreNodeNamesEqual(xercesc::DOMNode const* left, xercesc::DOMNode const* right) const override {
        return xercesc::XMLString::equals(left->getNodeName(), right->getNodeName());
    }
    TavoXML::XMLValueComparator* GetValueComparator() const override {
        return new TavoXML::XMLCompareStringCaseSensitive();
    }
    TavoXML::XMLValueComparator* GetAttributeValueComparator(xercesc::DOMAttr const*) const override {
        return new TavoXML::XMLCompareStringCaseSensitive();
    }
};

struct DiffSettings {
    double eps = TavoXML::StrictOrderAutoValueCompareOptions::kDefaultDoubleEps;
    bool attrRuled = false;
    bool skipWhitespace = false;
    bool caseSensitive = false;
    std::string left;
    std::string right;
};

std::unique_ptr<TavoXML::StrictOrderAutoValueCompareOptions> MakeOptions(DiffSettings const& settings) {
    std::unique_ptr<TavoXML::StrictOrderAutoValueCompareOptions> options;
    if (settings.attrRuled) {
        options = settings.caseSensitive
                      ? std::make_unique<CaseSensitiveOptions<TavoXML::AttrRuledCompareOptions>>()
                      : std::make_unique<TavoXML::AttrRuledCompareOptions>();
    } else if (settings.caseSensitive) {
        options = std::make_unique<CaseSensitiveOptions<TavoXML::StrictOrderAutoValueCompareOptions>>();
    } else {
        options = std::make_unique<TavoXML::StrictOrderAutoValueCompareOptions>();
    }
    options->SetDoubleEps(settings.eps);
    return options;
}

void PrintDifference(TavoXML::XMLCompareException const& report, DiffSettings const& settings,
                     ParsedInput const& left, ParsedInput const& right) {
    std::printf("%s\n", Tavo::ToUTF8String(report.GetText()).c_str());
    auto const line = [](ParsedInput const& input, xercesc::DOMNode const* node) {
        return input.LineOf(node);
    };
    std::printf("%s:%u\n%s:%u\n", settings.left.c_str(),
                line(left, report.GetNode(TavoXML::XMLCompareException::Left)), settings.right.c_str(),
                line(right, report.GetNode(TavoXML::XMLCompareException::Right)));
}

int RunDiff(DiffSettings const& settings) {
    if (settings.left == "-" && settings.right == "-") {
        std::fprintf(stderr, "only one side can be read from standard input\n");
        return ExitTrouble;
    }
    ParseSettings const parse{false, nullptr};
    ParsedInput const left = Parse(settings.left, parse);
    ParsedInput const right = Parse(settings.right, parse);
    settings.right == "-" && settings.left == "-" ? ParsedInput() : Parse(settings.right, parse);
    for (auto const* input : {&left, &right}) {
        if (!input->document) {
            std::string const& name = input == &left ? settings.left : settings.right;
            std::fprintf(stderr, "%s:%u: %s\n", name.c_str(), input->line,
                         input->readable ? input->message.c_str() : "cannot read the file");
            return ExitTrouble;
        }
    }
    auto const options = MakeOptions(settings);
    TavoXML::XMLCompareStrictOrder comparator;
    TavoXML::SkipWhitespaceTextsCompareFilter filter;
    try {
        TavoXML::DoXMLCompare(left.document.get(), right.document.get(), &comparator,
                              settings.skipWhitespace ? &filter : nullptr, *options);
    } catch (TavoXML::XMLCompareException const& report) {
        PrintDifference(report, settings, left, right);
        return ExitBad;
    }
    return ExitGood;
}

} // namespace

void AddDiffCommand(CLI::App& app, std::function<void(int)> const& setResult) {
    auto settings = std::make_shared<DiffSettings>();
    CLI::App* command = app.add_subcommand(
        "diff", "Compare LEFT and RIGHT in strict child order and print the first difference with the source "
                "line of each differing node; nothing is printed when they are equal.");
    command->add_option("--eps", settings->eps, "Tolerance for numbers read as reals")->capture_default_str();
    command->add_flag("--attr-ruled", settings->attrRuled,
                      "Let tavo_type and tavo_eps attributes in the documents steer the comparison");
    command->add_flag("--skip-whitespace", settings->skipWhitespace, "Ignore text nodes made of white space");
    command->add_flag("--case-sensitive", settings->caseSensitive,
                      "Compare names exactly and values as text with regard to case");
    command->add_option("left", settings->left, "First document; - reads standard input")->required();
    command->add_option("right", settings->right, "Second document")->required();
    command->callback([settings, setResult] { setResult(RunDiff(*settings)); });
}

} // namespace Tool
