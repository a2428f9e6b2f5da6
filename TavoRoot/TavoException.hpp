// The exception family of the foundation: Tavo::TavoException (the root, with message, thrower's
// source file and line, an optional cloned cause and an error code), Tavo::GeneralException (derived
// virtually), Tavo::RunTimeErrorException, Tavo::OutOfMemoryException and Tavo::BMOutOfMemoryException.
#pragma once

#include "TavoRoot/OChannel.hpp"
#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/UniString.hpp"

#include <memory>
#include <string>

namespace Tavo {

class TAVOROOT_API TavoException {
public:
    TavoException(char const* message, char const* file, unsigned int line, TavoException const* previous,
                  int errorCode);
    TavoException(char const* message, char const* file, unsigned int line, TavoException const& previous,
                  int errorCode);
    TavoException(UniString const& message, char const* file, unsigned int line,
                  TavoException const* previous, int errorCode);
    TavoException(UniString const& message, char const* file, unsigned int line,
                  TavoException const& previous, int errorCode);
    TavoException(TavoException const& other);
    TavoException& operator=(TavoException const&) = delete;
    virtual ~TavoException();

    virtual char const* GetName() const;
    // A new heap copy of the same dynamic type; the caller deletes it.
    virtual TavoException* Clone() const;
    // Writes "Name: message (file:line)" and, on following lines, the chain of causes, as UTF-8.
    virtual void Print(OChannel& channel) const;

    UniString const& GetMessage() const noexcept { return message; }
    char const* GetFile() const noexcept { return file.c_str(); }
    unsigned int GetLine() const noexcept { return line; }
    int GetErrorCode() const noexcept { return errorCode; }
    // The cause this exception was thrown with, or null.
    TavoException const* GetPrevious() const noexcept { return previous.get(); }

private:
    UniString message;
    std::string file;
    unsigned int line;
    std::unique_ptr<TavoException> previous;
    int errorCode;
};

class TAVOROOT_API GeneralException : public virtual TavoException {
public:
    GeneralException(char const* message, char const* file, unsigned int line, TavoException const* previous,
                     int errorCode);
    GeneralException(GeneralException const& other);
    ~GeneralException() override;
    char const* GetName() const override;
    TavoException* Clone() const override;
};

class TAVOROOT_API RunTimeErrorException : public GeneralException {
public:
    RunTimeErrorException(char const* message, char const* file, unsigned int line, int errorCode);
    RunTimeErrorException(RunTimeErrorException const& other);
    ~RunTimeErrorException() override;
    char const* GetName() const override;
    TavoException* Clone() const override;
};

// A foundation container could not get memory.
class TAVOROOT_API OutOfMemoryException : public GeneralException {
public:
    OutOfMemoryException(char const* message, char const* file, unsigned int line, int errorCode);
    OutOfMemoryException(OutOfMemoryException const& other);
    ~OutOfMemoryException() override;
    char const* GetName() const override;
    TavoException* Clone() const override;
};

// A block-memory container (Tavo::VAArray) could not get memory.
class TAVOROOT_API BMOutOfMemoryException : public OutOfMemoryException {
public:
    BMOutOfMemoryException(char const* message, char const* file, unsigned int line, int errorCode);
    BMOutOfMemoryException(BMOutOfMemoryException const& other);
    ~BMOutOfMemoryException() override;
    char const* GetName() const override;
    TavoException* Clone() const override;
};

} // namespace Tavo

// Reports a broken internal expectation on standard error and returns.
TAVOROOT_API void DBBreak(char const* file, unsigned int line, char const* text, char const* function,
                          char const* reserved1, char const* reserved2);
