#include "bridge/model.h"

#include <utility>

#include "bridge/gil.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {

std::shared_ptr<Model> Model::adopt(py::object object) {
  GRBmodel* const handle = models().reserve();
  GRBenv* const envHandle = envs().reserve();
  const std::shared_ptr<Env> env = Env::make();
  const std::shared_ptr<Model> model(new Model(handle, envHandle, env), [](Model* dead) {
    const Gil gil;
    delete dead;
  });
  env->model = model;
  model->setObject(std::move(object));
  envs().add(envHandle, env);
  models().add(handle, model);
  return model;
}

Model::Model(GRBmodel* handle, GRBenv* envHandle, std::shared_ptr<Env> env)
    : handle_(handle), envHandle_(envHandle), env_(std::move(env)) {}

void Model::setObject(py::object object) {
  object_ = std::move(object);
  env_->setObject(object_.attr("_env"));
  methods_ = {object_.attr("addVar"), object_.attr("addLConstr"), object_.attr("chgCoeff"), object_.attr("getAttr"),
              object_.attr("setAttr")};
  readElements();
}

void Model::readElements() {
  constexpr std::pair<Kind, const char*> kReaders[] = {{Kind::kVar, "getVars"},
                                                       {Kind::kConstr, "getConstrs"},
                                                       {Kind::kSos, "getSOSs"},
                                                       {Kind::kQConstr, "getQConstrs"},
                                                       {Kind::kGenConstr, "getGenConstrs"}};
  for (const auto& [kind, reader] : kReaders) elements(kind).assign(py::list(object_.attr(reader)()));
}

int Model::count(const char* attribute) const { return integer(methods_.getAttr(attribute)); }

void Model::dispose() {
  for (Elements& list : elements_) list.assign(py::list());
  methods_ = {};
  env_->setObject({});
  const py::object object = std::exchange(object_, {});
  object.attr("dispose")();
}

}  // namespace bridge
