// KALMORA_PRINTF(text, first): the function takes a printf format as its parameter number `text`, and what
// the format asks for from number `first` on (both counted from 1, `this` included). Compilers that know how
// then hold each call to its format. It stands in front of the declaration.
#pragma once

#if defined(__GNUC__)
#define KALMORA_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define KALMORA_PRINTF(text, first)
#endif
