#include "TavoRoot/TavoException.hpp"

#include <cstdio>
#include <memory>
#include <string>

namespace Tavo {

namespace {

std::unique_ptr<TavoException> CloneOrNull(TavoException const* exception) {
    return std::unique_ptr<TavoException>(exception ? exception->Clone() : nullptr);
}

void WriteText(OChannel& channel, std::string const& text) {
    channel.WriteBin(text.data(), static_cast<unsigned int>(text.size()), nullptr);
}

// "Name: message (file:line)" in UTF-8, without a line end.
std::string Describe(TavoException const& exception) {
    std::unique_ptr<char[]> const message(exception.GetMessage().CopyUTF8());
    std::string text = exception.GetName();
    text += ": ";
    text += message ? message.get() : "";
    text += " (";
    text += exception.GetFile();
    text += ':';
    text += std::to_string(exception.GetLine());
    text += ')';
    return text;
}

} // namespace

TavoException::TavoException(char const* message, char const* file, unsigned int line,
                             TavoException const* previous, int errorCode)
    : TavoException(UniString(message, TavoCharCodeDefault), file, line, previous, errorCode) {}

TavoException::TavoException(char const* message, char const* file, unsigned int line,
                             TavoException const& previous, int errorCode)
    : TavoException(UniString(message, TavoCharCodeDefault), file, line, &previous, errorCode) {}

TavoException::TavoException(UniString const& message, char const* file, unsigned int line,
                             TavoException const* previous, int errorCode)
    : message(message), file(file ? file : ""), line(line), previous(CloneOrNull(previous)),
      errorCode(errorCode) {}

TavoException::TavoException(UniString const& message, char const* file, unsigned int line,
                             TavoException const& previous, int errorCode)
    : TavoException(message, file, line, &previous, errorCode) {}

TavoException::TavoException(TavoException const& other)
    : message(other.message), file(other.file), line(other.line), previous(CloneOrNull(other.previous.get())),
      errorCode(other.errorCode) {}

TavoException::~TavoException() = default;

char const* TavoException::GetName() const {
    return "TavoException";
}

TavoException* TavoException::Clone() const {
    return new TavoException(*this);
}

void TavoException::Print(OChannel& channel) const {
    WriteText(channel, Describe(*this) + '\n');
    for (TavoException const* cause = GetPrevious(); cause; cause = cause->GetPrevious()) {
        WriteText(channel, "Caused by " + Describe(*cause) + '\n');
    }
}

GeneralException::GeneralException(char const* message, char const* file, unsigned int line,
                                   TavoException const* previous, int errorCode)
    : TavoException(message, file, line, previous, errorCode) {}

GeneralException::GeneralException(GeneralException const& other) : TavoException(other) {}

GeneralException::~GeneralException() = default;

char const* GeneralException::GetName() const {
    return "GeneralException";
}

TavoException* GeneralException::Clone() const {
    return new GeneralException(*this);
}

// The virtual root is built by the most derived class, so each class below initialises it itself.
RunTimeErrorException::RunTimeErrorException(char const* message, char const* file, unsigned int line,
                                             int errorCode)
    : TavoException(message, file, line, nullptr, errorCode),
      GeneralException(message, file, line, nullptr, errorCode) {}

RunTimeErrorException::RunTimeErrorException(RunTimeErrorException const& other)
    : TavoException(other), GeneralException(other) {}

RunTimeErrorException::~RunTimeErrorException() = default;

char const* RunTimeErrorException::GetName() const {
    return "RunTimeErrorException";
}

TavoException* RunTimeErrorException::Clone() const {
    return new RunTimeErrorException(*this);
}

OutOfMemoryException::OutOfMemoryException(char const* message, char const* file, unsigned int line,
                                           int errorCode)
    : TavoException(message, file, line, nullptr, errorCode),
      GeneralException(message, file, line, nullptr, errorCode) {}

OutOfMemoryException::OutOfMemoryException(OutOfMemoryException const& other)
    : TavoException(other), GeneralException(other) {}

OutOfMemoryException::~OutOfMemoryException() = default;

char const* OutOfMemoryException::GetName() const {
    return "OutOfMemoryException";
}

TavoException* OutOfMemoryException::Clone() const {
    return new OutOfMemoryException(*this);
}

BMOutOfMemoryException::BMOutOfMemoryException(char const* message, char const* file, unsigned int line,
                                               int errorCode)
    : TavoException(message, file, line, nullptr, errorCode),
      OutOfMemoryException(message, file, line, errorCode) {}

BMOutOfMemoryException::BMOutOfMemoryException(BMOutOfMemoryException const& other)
    : TavoException(other), OutOfMemoryException(other) {}

BMOutOfMemoryException::~BMOutOfMemoryException() = default;

char const* BMOutOfMemoryException::GetName() const {
    return "BMOutOfMemoryException";
}

TavoException* BMOutOfMemoryException::Clone() const {
    return new BMOutOfMemoryException(*this);
}

} // namespace Tavo

void DBBreak(char const* file, unsigned int line, char const* text, char const* function, char const*,
             char const*) {
    // One line on standard error; the process goes on.
    std::fprintf(stderr, "DBBreak: %s (%s:%u, %s)\n", text ? text : "", file ? file : "", line,
                 function ? function : "");
    std::fflush(stderr);
}
