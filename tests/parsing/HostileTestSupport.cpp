#include "parsing/HostileTestSupport.hpp"
#include "common/DocumentOrder.hpp"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ParsingTest {

namespace {

std::size_t AddressSpaceInUse() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmSize:", 0) == 0) {
            return std::stoull(line.substr(7)) * 1024;
        }
    }
    return 0;
}

void WriteAll(int descriptor, std::string const& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        ssize_t const written = write(descriptor, text.data() + done, text.size() - done);
        if (written <= 0) {
            return;
        }
        done += static_cast<std::size_t>(written);
    }
}

} // namespace

ChildOutcome RunInChild(std::function<std::string()> const& body, std::size_t extraBytes, unsigned seconds) {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) {
        return {"pipe failed", false};
    }
    std::size_t const limit = extraBytes == 0 ? 0 : AddressSpaceInUse() + extraBytes;
    std::fflush(nullptr);
    pid_t const child = fork();
    if (child == 0) {
        close(pipeEnds[0]);
        if (limit != 0) {
            rlimit const bound{limit, limit};
            setrlimit(RLIMIT_AS, &bound);
        }
        alarm(seconds);
        std::string text;
        try {
            text = body();
        } catch (...) {
            text = "exception left the body";
        }
        WriteAll(pipeEnds[1], "R" + text);
        close(pipeEnds[1]);
        _exit(0);
    }
    close(pipeEnds[1]);
    std::string received;
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(pipeEnds[0], buffer, sizeof buffer)) > 0) {
        received.append(buffer, static_cast<std::size_t>(count));
    }
    close(pipeEnds[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!received.empty() && received[0] == 'R') {
        return {received.substr(1), true};
    }
    if (WIFSIGNALED(status)) {
        return {"killed by signal " + std::to_string(WTERMSIG(status)), false};
    }
    return {"ended with status " + std::to_string(WEXITSTATUS(status)), false};
}

WorkingDirectory::WorkingDirectory(std::filesystem::path const& folder)
    : previous(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
}

WorkingDirectory::~WorkingDirectory() {
    std::error_code ignored;
    std::filesystem::current_path(previous, ignored);
}

std::string AllText(xercesc::DOMDocument const* document) {
    std::string text;
    xercesc::DOMNode const* node = document;
    while (node != nullptr) {
        if (node->getNodeValue() != nullptr) {
            text += Utf8(node->getNodeValue());
        }
        if (xercesc::DOMNamedNodeMap const* attributes = node->getAttributes()) {
            for (XMLSize_t index = 0; index < attributes->getLength(); ++index) {
                text += Utf8(attributes->item(index)->getNodeValue());
            }
        }
        node = TavoTest::NextInDocumentOrder(node);
    }
    return text;
}

std::string RepeatedEntityDocument(std::size_t entityLength, std::size_t references, bool inAttribute) {
    std::string text = "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED><!ENTITY e \"" +
                       std::string(entityLength, 'x') + "\">]>\n";
    text += inAttribute ? "<r a=\"" : "<r>";
    text.reserve(text.size() + references * 3 + 8);
    for (std::size_t index = 0; index < references; ++index) {
        text += "&e;";
    }
    text += inAttribute ? "\"/>" : "</r>";
    return text;
}

std::string PlainDocument(std::size_t bytes) {
    std::string const item = "<a>" + std::string(120, 't') + "</a>\n";
    std::string text = "<r>\n";
    text.reserve(bytes + item.size() + 8);
    while (text.size() < bytes) {
        text += item;
    }
    return text + "</r>";
}

Document ParseBytes(std::string const& bytes, NodeLocationInfo* line, Tavo::UniString* message,
                    bool createEntityRefs, Parser::ValSchemes scheme) {
    return Document(ParseXMLDoc(reinterpret_cast<unsigned char const*>(bytes.data()),
                                static_cast<unsigned int>(bytes.size()), scheme, createEntityRefs,
                                Tavo::UniString("memory.xml"), nullptr, line, message));
}

} // namespace ParsingTest
