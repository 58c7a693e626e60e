#include <campotipo-records/records.h>

#include <algorithm>
#include <tuple>

#include "columns/plan.hpp"
#include "face/errors.hpp"
#include "face/objects.hpp"
#include "face/writing.hpp"
#include "rows/loader.hpp"

namespace records = campotipo::records;
namespace face = campotipo::records::face;

namespace campotipo::records::face {

namespace {

// The rows of a CSV file on their way into records.
class Rows {
 public:
  Rows(Source &source, const char *kind, Writing &writing)
      : writing_(&writing), name_(source.name()), stream_(source) {
    if (kind != nullptr && *kind != '\0') kind_ = &kind_for(writing.layout(), kind);
  }

  void run() {
    if (!stream_.header(header_)) {
      throw Error(ErrorCode::kInput,
                  name_ + ": is empty, expected a row with the names of the columns");
    }
    lines_ = stream_.header_lines();
    const Loader loader(writing_->layout(), header_, writing_->ignored(), name_, kind_);
    LoadedBlock block;
    while (stream_.read(block.csv)) {
      loader.load(block, FindingCounts::kEveryPlace);
      add(block);
    }
  }

 private:
  void add(LoadedBlock &block) {
    tell_losses(block.lost);
    writing_->put(block, block.rows);
    if (!block.fault.empty()) {
      throw error(ErrorCode::kRecord, block.fault_line, writing_->records() + 1, "", block.fault);
    }
    lines_ += block.lines;
  }

  // In the order of the records, and of the columns in each.
  void tell_losses(const FindingCounts &lost) {
    struct Loss {
      std::uint64_t record;
      std::ptrdiff_t column;
      const FindingCounts::Line *line;
      const Location *place;
    };
    std::vector<Loss> all;
    for (const FindingCounts::Line &line : lost.lines()) {
      const auto column = std::find(header_.begin(), header_.end(), line.field) - header_.begin();
      for (const Location &place : line.entry.places) {
        all.push_back({place.record, column, &line, &place});
      }
    }
    std::sort(all.begin(), all.end(), [](const Loss &a, const Loss &b) {
      return std::tie(a.record, a.column) < std::tie(b.record, b.column);
    });
    for (const Loss &loss : all) {
      writing_->lose(error(ErrorCode::kValue, loss.place->line, writing_->records() + loss.record,
                           loss.line->field,
                           "\"" + shortened(loss.place->value) + "\" " + loss.line->what));
    }
  }

  Error error(ErrorCode code, std::uint64_t line, std::uint64_t record, const std::string &field,
              const std::string &what) const {
    line += lines_;
    Error made(code, name_ + ":" + std::to_string(line) + ": record " + std::to_string(record) +
                         ": " + (field.empty() ? "" : "field " + field + ": ") + what);
    made.line = static_cast<std::uint32_t>(line);
    made.record = record;
    made.field = field;
    return made;
  }

  Writing *writing_;
  const RecordType *kind_ = nullptr;  // of all rows; null: they tell it
  std::string name_;
  CsvStream stream_;
  std::vector<std::string> header_;
  std::uint64_t lines_ = 0;
};

}  // namespace

}  // namespace campotipo::records::face

extern "C" {

campotipo_status campotipo_loader_open(const campotipo_layout *layout, const campotipo_sink *sink,
                                       const campotipo_loader_options *options,
                                       campotipo_loader **loader, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (layout == nullptr || loader == nullptr) face::refuse("layout and loader have to be told");
    face::check_size(sink, "sink");
    if (sink->write == nullptr) face::refuse("a sink has to have write");
    campotipo_loader_options told = {};
    told.size = sizeof told;
    if (options != nullptr) {
      face::check_size(options, "loader_options");
      told = *options;
    }
    *loader = new campotipo_loader{{layout->layout, *sink, told}};
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_load(campotipo_loader *loader, const char *kind,
                                const campotipo_input *csv, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (loader == nullptr) face::refuse("loader has to be told");
    loader->writing.add([&] {
      const std::unique_ptr<records::Source> source = face::open_source(csv);
      face::Rows(*source, kind, loader->writing).run();
    });
    return CAMPOTIPO_OK;
  });
}

campotipo_status campotipo_loader_finish(campotipo_loader *loader, campotipo_error *error) {
  return face::guarded(error, [&] {
    if (loader == nullptr) face::refuse("loader has to be told");
    loader->writing.finish();
    return CAMPOTIPO_OK;
  });
}

uint64_t campotipo_loader_records(const campotipo_loader *loader) {
  return loader->writing.records();
}

uint64_t campotipo_loader_losses(const campotipo_loader *loader) {
  return loader->writing.losses();
}

void campotipo_loader_free(campotipo_loader *loader) { delete loader; }

}  // extern "C"
