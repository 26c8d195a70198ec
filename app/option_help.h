#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kavo/kavo.h"

namespace app {

using SettingInfos = std::vector<kavo_setting_info>;

// Help about settings as text for people, wrapped to `width` columns. Lines end with "\n".

// The groups with the number of their settings.
std::string groupList(const SettingInfos& infos);

// Those that have the word in their name or in the name of their group, in full; the names of those that have it in
// their meaning only. When there are only the latter, they are shown in full. The name itself comes first; case does
// not matter.
std::string helpAbout(const SettingInfos& infos, std::string_view word, std::size_t width);

// Every setting under its group, in full.
std::string helpAboutAll(const SettingInfos& infos, std::size_t width);

// The page docs/options.md.
std::string optionPage(const SettingInfos& infos);

}  // namespace app
