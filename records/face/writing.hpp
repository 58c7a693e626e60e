#pragma once

#include <campotipo-records/records.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "errors/error.hpp"
#include "layout/layout.hpp"
#include "rows/filler.hpp"

namespace campotipo::records::face {

// A file of records on its way to a sink: what stands around the records, how many there are, and
// what becomes of values that are not stored whole.
class Writing {
 public:
  Writing(std::shared_ptr<const Layout> layout, const campotipo_sink &sink,
          const campotipo_loader_options &options);

  const Layout &layout() const { return *layout_; }
  const std::vector<std::string> &ignored() const { return ignored_; }

  // Runs what adds records. After an error that tells of them the file cannot be finished.
  template <class Work>
  void add(Work work) {
    check_open();
    try {
      work();
    } catch (const Error &error) {
      ended_ = error.code() != ErrorCode::kArgument;
      throw;
    } catch (...) {
      ended_ = true;
      throw;
    }
  }

  // A value of a record that the next bytes hold. Throws it where it is refused at once.
  void lose(const Error &loss);

  // What the layout tells of the records is filled in; a part of a file does not tell what follows from
  // others.
  void put(MadeRecords &made, std::uint64_t records);
  void finish();

  std::uint64_t records() const { return records_; }
  std::uint64_t losses() const { return losses_; }

 private:
  void check_open() const;
  void begin();
  void write(std::string_view bytes);
  void flush(std::string_view bytes);

  std::shared_ptr<const Layout> layout_;
  campotipo_sink sink_;
  bool lossy_;
  bool bare_;
  void (*lost_)(void *context, const campotipo_error *loss);
  void *context_;
  std::vector<std::string> ignored_;
  std::string header_;
  std::string trailer_;
  Filler filler_;
  bool holds_;  // the whole file, since its end tells what stands in front
  std::string held_;
  std::uint64_t written_ = 0;
  std::uint64_t records_ = 0;
  std::uint64_t losses_ = 0;
  bool begun_ = false;
  bool ended_ = false;
};

}  // namespace campotipo::records::face

struct campotipo_loader {
  campotipo::records::face::Writing writing;
};
