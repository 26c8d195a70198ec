#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kavo/link.h"
#include "kavo/model/changes.h"
#include "kavo/model/model.h"
#include "kavo/result/results.h"
#include "kavo/setting/setting.h"

namespace kavo {

class LoadedLink;   // kavo/link/loaded_link.h: an opened link library
class StopRequest;  // kavo/link/stop_request.h: a remembered request to stop

}  // namespace kavo

// The record behind the handle.
struct trpRec {
  trpRec();
  ~trpRec();
  trpRec(const trpRec&) = delete;
  trpRec& operator=(const trpRec&) = delete;

  kavo::Model model;
  int objectiveNumber = 1;
  kavo::Changes changes;                       // since the last solve of this link that succeeded
  bool wasSolved = false;                      // by this link, be it that it failed
  double basisRatio = 0;                       // as kavo_set_basis_ratio has it
  std::deque<kavo::Setting> settings;          // for the link; a deque keeps the text in place that the views show
  std::vector<kavo_setting> settingViews;      // what kavo_link_settings lends
  std::deque<kavo::SettingInfo> ownInfos;      // settings that the host has declared,
  std::deque<kavo::Setting> ownSettings;       // and those given under their names
  std::deque<kavo::SettingInfo> settingInfos;  // all that the link has published
  std::string description;                     // the same as YAML
  std::string solverText;
  std::string linkError;                 // the failure that the link reported last
  std::string nameBuffer;                // what kavo_name lends
  std::optional<kavo::Results> results;  // of the last solve that finished
  kavo::Results filling;                 // what the running solve has given so far
  std::vector<std::string> notes;        // of the last solve, whether it finished or failed
  std::vector<std::string> lostFiles;    // of the last solve, a line for each
  bool solving = false;
  void (*logWrite)(const char*, std::size_t, void*) = nullptr;
  void* logData = nullptr;
  int (*progress)(const kavo_progress*, void*) = nullptr;
  void* progressData = nullptr;
  std::unique_ptr<kavo::StopRequest> stop;
  std::unique_ptr<kavo::LoadedLink> link;
};
