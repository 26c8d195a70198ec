/* Both headers are C: this file only has to compile, and the test calls it to see that C finds the functions. */
#include "kavo/kavo.h"
#include "kavo/link.h"

int countColumnsFromC(const trpRec* model) {
  kavo_columns columns;
  return kavo_link_columns(model, &columns) == KAVO_OK ? (int)columns.count : -1;
}
