#pragma once

#include <campotipo-records/records.h>

#include <memory>

// What stands behind the callbacks of an Arrow C stream of this library.
namespace campotipo::records::face {

class ArrowStream {
 public:
  ArrowStream() = default;
  ArrowStream(const ArrowStream &) = delete;
  ArrowStream &operator=(const ArrowStream &) = delete;
  virtual ~ArrowStream() = default;

  // Each gives 0 or a number of errno.h.
  int schema(ArrowSchema *out);
  int next(ArrowArray *out);

  // Of the last call.
  const char *last_error() const { return last_.status == CAMPOTIPO_OK ? nullptr : last_.text; }
  const campotipo_error &last() const { return last_; }

 private:
  // Each throws what is wrong. A released array stands for the end.
  virtual void make_schema(ArrowSchema *out) = 0;
  virtual void make_next(ArrowArray *out) = 0;

  template <class Work>
  int watched(Work work) noexcept;

  campotipo_error last_ = {};
};

// Gives a stream to the caller's structure, which owns it from then on.
void hand_over(std::unique_ptr<ArrowStream> stream, ArrowArrayStream *out);

// Null for a stream of someone else, and for one that is released.
const ArrowStream *own_stream(const ArrowArrayStream *stream);

}  // namespace campotipo::records::face
