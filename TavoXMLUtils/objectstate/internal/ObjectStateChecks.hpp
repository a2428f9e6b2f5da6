// The checks of the object-state bridge: its nesting bound, a provider's words, and the shapes of XML
// that the typed reader refuses. Each failure throws TavoXML::XMLObjectStateException.
//
// The writer follows the foundation's recursive Enumerate and the readers recurse once per level, so
// both refuse more than MaxObjectStateDepth nested objects and lists below the root instead of running
// out of stack. The bound is far above what a settings tree needs and far below what a thread's stack
// survives. Beyond it the writer and the typed reader throw; the plain reader fails the level instead,
// as it does for a value it can't read.
#pragma once

namespace TavoXML::detail {

inline constexpr unsigned int MaxObjectStateDepth = 1000;

// Throws when `openLevels` levels are open already and one more would pass the bound.
void CheckObjectStateDepth(unsigned int openLevels);

// `word` itself; throws, naming `what`, when a provider returned null for a word that is needed.
char const* RequiredProviderWord(char const* word, char const* what);

// Throws for XML that the typed dialect can't read; `message` says what is wrong.
[[noreturn]] void ThrowUnreadableXML(char const* message);

} // namespace TavoXML::detail
