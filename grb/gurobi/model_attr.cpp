#include <vector>

#include "grb/gurobi/model.h"

namespace grb {
namespace {

using tav::idx::List;

// Gurobi's strings are its own and change with its next call; none at all counts as empty.
std::string owned(const char* text) { return text != nullptr ? text : ""; }

// One bulk call: the array form for a contiguous list, else the list form with the indices written out.
template <typename T, typename U>
void bulk(const Api& api, GRBmodel* model, int (*Api::*arrayForm)(GRBmodel*, const char*, int, int, T*),
          int (*Api::*listForm)(GRBmodel*, const char*, int, int*, T*), const char* name, const List& elements,
          std::span<U> values) {
  const int size = elements.size();
  if (values.size() < static_cast<std::size_t>(size)) {
    throw tav::CheckException::failedGreaterOrEqualTo("values.size()", values.size(), {"elements.size()", size});
  }
  T* const target = const_cast<T*>(values.data());
  if (elements.kind() == tav::idx::Kind::kContiguous) {
    static_cast<void>((api.*arrayForm)(model, name, elements.front(), size, target));
    return;
  }
  std::vector<int> indices(static_cast<std::size_t>(size));
  elements.copyTo(indices);
  static_cast<void>((api.*listForm)(model, name, size, indices.data(), target));
}

}  // namespace

int GurobiModel::getIntAttr(const char* name) {
  int value = 0;
  check(api_->GRBgetintattr(reading(), name, &value), "GRBgetintattr");
  return value;
}

double GurobiModel::getDblAttr(const char* name) {
  double value = 0;
  check(api_->GRBgetdblattr(reading(), name, &value), "GRBgetdblattr");
  return value;
}

std::string GurobiModel::getStrAttr(const char* name) {
  char* value = nullptr;
  check(api_->GRBgetstrattr(reading(), name, &value), "GRBgetstrattr");
  return owned(value);
}

int GurobiModel::getIntAttrElement(const char* name, int element) {
  int value = 0;
  check(api_->GRBgetintattrelement(reading(), name, element, &value), "GRBgetintattrelement");
  return value;
}

double GurobiModel::getDblAttrElement(const char* name, int element) {
  double value = 0;
  check(api_->GRBgetdblattrelement(reading(), name, element, &value), "GRBgetdblattrelement");
  return value;
}

char GurobiModel::getCharAttrElement(const char* name, int element) {
  char value = 0;
  check(api_->GRBgetcharattrelement(reading(), name, element, &value), "GRBgetcharattrelement");
  return value;
}

std::string GurobiModel::getStrAttrElement(const char* name, int element) {
  char* value = nullptr;
  check(api_->GRBgetstrattrelement(reading(), name, element, &value), "GRBgetstrattrelement");
  return owned(value);
}

void GurobiModel::setIntAttr(const char* name, int value) {
  check(api_->GRBsetintattr(changing(), name, value), "GRBsetintattr");
}

void GurobiModel::setDblAttr(const char* name, double value) {
  check(api_->GRBsetdblattr(changing(), name, value), "GRBsetdblattr");
}

void GurobiModel::setStrAttr(const char* name, const char* value) {
  check(api_->GRBsetstrattr(changing(), name, value), "GRBsetstrattr");
}

void GurobiModel::setIntAttrElement(const char* name, int element, int value) {
  check(api_->GRBsetintattrelement(changing(), name, element, value), "GRBsetintattrelement");
}

void GurobiModel::setDblAttrElement(const char* name, int element, double value) {
  check(api_->GRBsetdblattrelement(changing(), name, element, value), "GRBsetdblattrelement");
}

void GurobiModel::setStrAttrElement(const char* name, int element, const char* value) {
  check(api_->GRBsetstrattrelement(changing(), name, element, value), "GRBsetstrattrelement");
}

bool GurobiModel::isAttrAvailable(const char* name) const { return api_->GRBisattravailable(model(), name) != 0; }

void GurobiModel::getIntAttrArray(const char* name, const List& elements, std::span<int> values) const {
  bulk(*api_, model(), &Api::GRBgetintattrarray, &Api::GRBgetintattrlist, name, elements, values);
}

void GurobiModel::getDblAttrArray(const char* name, const List& elements, std::span<double> values) const {
  bulk(*api_, model(), &Api::GRBgetdblattrarray, &Api::GRBgetdblattrlist, name, elements, values);
}

void GurobiModel::getCharAttrArray(const char* name, const List& elements, std::span<char> values) const {
  bulk(*api_, model(), &Api::GRBgetcharattrarray, &Api::GRBgetcharattrlist, name, elements, values);
}

void GurobiModel::setIntAttrArray(const char* name, const List& elements, std::span<const int> values) {
  bulk(*api_, model(), &Api::GRBsetintattrarray, &Api::GRBsetintattrlist, name, elements, values);
}

void GurobiModel::setDblAttrArray(const char* name, const List& elements, std::span<const double> values) {
  bulk(*api_, model(), &Api::GRBsetdblattrarray, &Api::GRBsetdblattrlist, name, elements, values);
}

}  // namespace grb
