// Settings as the host gives them, and what the link tells about them.

#include <fmt/format.h>

#include <algorithm>

#include "kavo/api/guard.h"
#include "kavo/setting/option_file.h"
#include "kavo/writer/file.h"

using kavo::Error;
using kavo::isSameName;
using kavo::Setting;
using kavo::SettingInfo;
using kavo::api::guard;
using kavo::api::need;
using kavo::api::needIdle;

namespace {

bool isOwn(const trpRec& record, const std::string& name) {
  return std::any_of(record.ownInfos.begin(), record.ownInfos.end(),
                     [&](const SettingInfo& info) { return isSameName(info.name(), name); });
}

void give(trpRec& record, Setting setting) {
  if (isOwn(record, setting.name)) {
    record.ownSettings.push_back(std::move(setting));
    return;
  }
  record.settingViews.emplace_back();
  try {
    record.settings.push_back(std::move(setting));
  } catch (...) {
    record.settingViews.pop_back();
    throw;
  }
  record.settingViews.back() = record.settings.back().view();
}

template <class Row>
auto rowAt(const std::deque<Row>& rows, std::size_t index) {
  return index < rows.size() ? rows[index].view() : decltype(rows[index].view()){};
}

}  // namespace

extern "C" {

int kavo_set_option(trpRec* model, const char* name, const char* value, const char* source, int line) {
  return guard([&] {
    trpRec& record = needIdle(model);
    if (need(name, "the option name") == '\0') throw Error(KAVO_INVALID, "the option name is empty");
    give(record, {name, &need(value, "the option value"), source != nullptr ? source : "", line});
  });
}

int kavo_clear_options(trpRec* model) {
  return guard([&] {
    trpRec& record = needIdle(model);
    record.settings.clear();
    record.settingViews.clear();
    record.ownSettings.clear();
  });
}

int kavo_read_options(trpRec* model, const char* path) {
  return guard([&] {
    trpRec& record = needIdle(model);
    for (Setting& setting : kavo::readOptionFile(&need(path, "the path"))) give(record, std::move(setting));
  });
}

int kavo_setting_info_at(const trpRec* model, size_t index, kavo_setting_info* out) {
  return guard([&] { need(out, "out") = rowAt(need(model).settingInfos, index); });
}

int kavo_describe_options(const trpRec* model, const char* path) {
  return guard([&] {
    const std::string& description = need(model).description;
    need(path, "the path");
    if (description.empty()) throw Error(KAVO_NO_RESULT, "no link is open that describes its options");
    kavo::writer::writeFile(path, [&](kavo::writer::Text& text) { text << description; });
  });
}

int kavo_declare_setting(trpRec* model, const kavo_setting_info* info) {
  return guard([&] {
    trpRec& record = needIdle(model);
    if (record.link) throw Error(KAVO_INVALID, "settings are declared before a link is opened");
    SettingInfo declared(need(info, "the description"));
    const std::string& name = declared.name();
    if (isOwn(record, name)) throw Error(KAVO_INVALID, fmt::format("the setting {} is declared already", name));
    if (std::any_of(record.settings.begin(), record.settings.end(),
                    [&](const Setting& given) { return isSameName(given.name, name); })) {
      throw Error(KAVO_INVALID, fmt::format("the setting {} was given before it was declared", name));
    }
    record.ownInfos.push_back(std::move(declared));
  });
}

int kavo_own_setting_at(const trpRec* model, size_t index, kavo_setting* out) {
  return guard([&] { need(out, "out") = rowAt(need(model).ownSettings, index); });
}

int kavo_setting_at(const trpRec* model, size_t index, kavo_setting* out) {
  return guard([&] { need(out, "out") = rowAt(need(model).settings, index); });
}

int kavo_link_settings(const trpRec* model, const kavo_setting** first, size_t* count) {
  return guard([&] {
    const auto& settings = need(model).settingViews;
    need(first, "first") = settings.data();
    need(count, "count") = settings.size();
  });
}

int kavo_link_own_setting_info(const trpRec* model, size_t index, kavo_setting_info* out) {
  return guard([&] { need(out, "out") = rowAt(need(model).ownInfos, index); });
}

int kavo_link_publish_setting(trpRec* model, const kavo_setting_info* info) {
  return guard([&] { need(model).settingInfos.emplace_back(need(info, "the description")); });
}

int kavo_link_publish_description(trpRec* model, const char* yaml) {
  return guard([&] { need(model).description = &need(yaml, "the description"); });
}

}  // extern "C"
