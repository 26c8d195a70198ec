// Attributes of many elements: a range of them, or a list of indices.
#include "bridge/attribute_access.h"
#include "bridge/call.h"
#include "bridge/exports.h"

namespace bridge {

extern "C" {

int GRBgetintattrarray(GRBmodel* model, const char* name, int first, int len, int* values) {
  return onModel(model, [&](Model& m) { readRange(m, name, first, len, values); });
}

int GRBgetdblattrarray(GRBmodel* model, const char* name, int first, int len, double* values) {
  return onModel(model, [&](Model& m) { readRange(m, name, first, len, values); });
}

int GRBgetcharattrarray(GRBmodel* model, const char* name, int first, int len, char* values) {
  return onModel(model, [&](Model& m) { readRange(m, name, first, len, values); });
}

int GRBsetintattrarray(GRBmodel* model, const char* name, int first, int len, int* values) {
  return onModel(model, [&](Model& m) { writeRange(m, name, first, len, values); });
}

int GRBsetdblattrarray(GRBmodel* model, const char* name, int first, int len, double* values) {
  return onModel(model, [&](Model& m) { writeRange(m, name, first, len, values); });
}

int GRBgetintattrlist(GRBmodel* model, const char* name, int len, int* ind, int* values) {
  return onModel(model, [&](Model& m) { readList(m, name, len, ind, values); });
}

int GRBgetdblattrlist(GRBmodel* model, const char* name, int len, int* ind, double* values) {
  return onModel(model, [&](Model& m) { readList(m, name, len, ind, values); });
}

int GRBgetcharattrlist(GRBmodel* model, const char* name, int len, int* ind, char* values) {
  return onModel(model, [&](Model& m) { readList(m, name, len, ind, values); });
}

int GRBsetintattrlist(GRBmodel* model, const char* name, int len, int* ind, int* values) {
  return onModel(model, [&](Model& m) { writeList(m, name, len, ind, values); });
}

int GRBsetdblattrlist(GRBmodel* model, const char* name, int len, int* ind, double* values) {
  return onModel(model, [&](Model& m) { writeList(m, name, len, ind, values); });
}

}  // extern "C"

}  // namespace bridge
