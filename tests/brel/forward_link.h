/* A link library whose functions are those of whoever has loaded it before the host: a test. */
#ifndef TESTS_BREL_FORWARD_LINK_H
#define TESTS_BREL_FORWARD_LINK_H

/* C includes this too. NOLINTBEGIN(readability-identifier-naming,modernize-use-using) */
struct trpRec;

/* What the exports of a link of the same names do. */
struct link_functions {
  int (*create)(void** handle, char* message, int length);
  void (*free)(void** handle);
  int (*ready)(void* handle, struct trpRec* model);
  int (*call)(void* handle);
  int (*modify)(void* handle);
};

/* The library's function "forwardTo". */
typedef void (*forward_to)(const struct link_functions* functions);
/* NOLINTEND(readability-identifier-naming,modernize-use-using) */

#endif
