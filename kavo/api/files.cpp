// Models from files, results to files.

#include "kavo/api/guard.h"
#include "kavo/reader/input.h"
#include "kavo/reader/nl/header.h"
#include "kavo/reader/reader.h"
#include "kavo/writer/file.h"
#include "kavo/writer/writer.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;

namespace {

const kavo::Results& resultsOf(const trpRec& record) {
  if (!record.results) throw Error(KAVO_NO_RESULT, "the model has not been solved");
  return *record.results;
}

}  // namespace

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
    kavo::writer::writePoint(record.model, resultsOf(record), &need(path, "the path"));
  });
}

int kavo_write_json(const trpRec* model, const char* path) {
  return guard([&] {
    const trpRec& record = need(model);
    kavo::writer::writeJson(record.model, resultsOf(record), record.notes, &need(path, "the path"));
  });
}

int kavo_check_writable(const char* path) {
  return guard([&] { kavo::writer::checkWritable(&need(path, "the path")); });
}

}  // extern "C"
