#include "tav/attr/lib/info_registry.h"

#include "tav/attr/lib/range_info.h"

namespace tav::attr::lib {

namespace {

template <class I>
class InfoAgent final : public yaml::AbstractAgent {
 public:
  void write(yaml::Emitter& emitter, const yaml::AbstractDocumented& object) const override {
    const auto& info = dynamic_cast<const AbstractBaseInfo&>(object);
    for (const std::string_view property : info.properties()) {
      if (info.isDefaultProperty(property)) continue;
      emitter.scalar(property);
      info.writeProperty(emitter, property);
    }
  }

  std::shared_ptr<yaml::AbstractDocumented> read(yaml::Parser& parser) const override {
    auto info = std::make_shared<I>();
    while (parser.peek() != yaml::EventKind::kMapEnd) {
      const yaml::Event property = parser.take(yaml::EventKind::kScalar);
      const yaml::Event value = parser.take(yaml::EventKind::kScalar);
      info->setProperty(property.text(), value.text());
    }
    return info;
  }
};

template <class I>
void addAgent(yaml::Registry& registry) {
  registry.add(I().documentedKind(), std::make_shared<const InfoAgent<I>>());
}

}  // namespace

const yaml::Registry& infoRegistry() {
  static const auto kRegistry = [] {
    yaml::Registry registry;
    addAgent<Info<std::string>>(registry);
    addAgent<Info<int>>(registry);
    addAgent<Info<double>>(registry);
    addAgent<RangeInfo<int>>(registry);
    addAgent<RangeInfo<double>>(registry);
    return registry;
  }();
  return kRegistry;
}

}  // namespace tav::attr::lib
