// Models from files, results to files.

#include "kavo/api/lend.h"
#include "kavo/reader/input.h"
#include "kavo/reader/nl/header.h"
#include "kavo/reader/reader.h"
#include "kavo/writer/file.h"
#include "kavo/writer/writer.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;
using kavo::api::poolPointOf;
using kavo::api::resultsOf;

extern "C" {

int kavo_read(trpRec* model, const char* path) {
  return kavo::api::guardChange(model, [&](kavo::Model& given) {
    need(path, "the path");
    if (!given.empty()) throw Error(KAVO_INVALID, "a file can be read only into an empty model");
    given = kavo::reader::read(path);
  });
}

int kavo_write_sol(const trpRec* model, const char* path, const char* message, int result_code) {
  return guard([&] {
    const trpRec& record = need(model);
    const kavo::Results* results = record.results ? &*record.results : nullptr;
    const kavo::writer::SolHeader header{&need(message, "the message"), result_code, record.objectiveNumber};
    kavo::writer::writeSol(record.model, results, &need(path, "the path"), header);
  });
}

int kavo_write_failure_sol(const char* nl_path, const char* path, const char* message, int result_code) {
  return guard([&] {
    const kavo::reader::Input input(&need(nl_path, "the path of the .nl file"));
    const kavo::reader::nl::Header head = kavo::reader::nl::readHeader(input.path(), input.text());
    const kavo::writer::SolShape shape{head.options, head.tolerance, static_cast<std::size_t>(head.constraints),
                                       static_cast<std::size_t>(head.variables)};
    kavo::writer::writeFailureSol(shape, &need(path, "the path"), {&need(message, "the message"), result_code});
  });
}

int kavo_write_point(const trpRec* model, const char* path) {
  return guard([&] {
    const trpRec& record = need(model);
    kavo::writer::writePoint(record.model, resultsOf(model), &need(path, "the path"));
  });
}

int kavo_write_pool_sol(const trpRec* model, size_t index, const char* path, const char* message) {
  return guard([&] {
    poolPointOf(model, index);
    const kavo::writer::SolHeader header{&need(message, "the message"), -1, model->objectiveNumber};
    kavo::writer::writePoolSol(model->model, *model->results, index, &need(path, "the path"), header);
  });
}

int kavo_write_pool_point(const trpRec* model, size_t index, const char* path) {
  return guard([&] {
    const kavo::PoolPoint& point = poolPointOf(model, index);
    kavo::writer::writePoint(model->model, point.objective, point.values, &need(path, "the path"));
  });
}

int kavo_write_json(const trpRec* model, const char* path) {
  return guard([&] {
    const trpRec& record = need(model);
    kavo::writer::writeJson(record.model, resultsOf(model), record.notes, &need(path, "the path"));
  });
}

int kavo_write_text(const char* path, const char* text, size_t length) {
  return guard([&] {
    const std::string_view whole(&need(text, "the text"), length);
    kavo::writer::writeFile(&need(path, "the path"), [&](kavo::writer::Text& out) { out << whole; });
  });
}

int kavo_check_writable(const char* path) {
  return guard([&] { kavo::writer::checkWritable(&need(path, "the path")); });
}

}  // extern "C"
