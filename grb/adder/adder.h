#pragma once

#include <memory>
#include <mutex>
#include <source_location>
#include <string>
#include <string_view>

#include "grb/data.h"
#include "tav/opt/adder.h"
#include "tav/opt/support_exception.h"

namespace grb {

// The place of a refusal: all adders tell the same file, with the true line and the adder's own signature.
tav::util::SourceLocation adderLocation(const std::source_location& at = std::source_location::current());

// Raises the support error "Element <element> of the block: <what>."; elements count from 0 in their block.
[[noreturn]] void failElement(int element, std::string_view what);

// Raises the support error "Adder inactive" when the record is gone or its model not open.
std::shared_ptr<Data> openRecord(const std::weak_ptr<Data>& data,
                                 const std::source_location& at = std::source_location::current());

// What all adders share: the weak hold on the solver's record. Interface: one of tav/opt/adder.h.
template <class Interface>
class Adder : public Interface {
 public:
  explicit Adder(std::weak_ptr<Data> data) : data_(std::move(data)) {}

  bool isActive() const override {
    const auto data = data_.lock();
    return data && data->model->hasModel();
  }

  std::uint64_t variableSpace() const override {
    const auto data = data_.lock();
    return data ? data->variableSpace() : 0;
  }

 protected:
  const std::weak_ptr<Data>& record() const { return data_; }

 private:
  std::weak_ptr<Data> data_;
};

}  // namespace grb
