#include "face/arrow_stream.hpp"

#include <cerrno>

#include "face/errors.hpp"

namespace campotipo::records::face {

namespace {

ArrowStream &stream_of(ArrowArrayStream *stream) {
  return *static_cast<ArrowStream *>(stream->private_data);
}

void release(ArrowArrayStream *stream) {
  delete &stream_of(stream);
  stream->release = nullptr;
}

}  // namespace

template <class Work>
int ArrowStream::watched(Work work) noexcept {
  last_ = {};
  last_.size = sizeof last_;
  const campotipo_status status = guarded(&last_, [&] {
    work();
    return CAMPOTIPO_OK;
  });
  if (status == CAMPOTIPO_OK) return 0;
  return status == CAMPOTIPO_MEMORY ? ENOMEM : status == CAMPOTIPO_INPUT ? EIO : EINVAL;
}

int ArrowStream::schema(ArrowSchema *out) {
  return watched([&] { make_schema(out); });
}

int ArrowStream::next(ArrowArray *out) {
  return watched([&] {
    *out = {};
    make_next(out);
  });
}

void hand_over(std::unique_ptr<ArrowStream> stream, ArrowArrayStream *out) {
  *out = {};
  out->get_schema = [](ArrowArrayStream *self, ArrowSchema *schema) {
    return stream_of(self).schema(schema);
  };
  out->get_next = [](ArrowArrayStream *self, ArrowArray *array) {
    return stream_of(self).next(array);
  };
  out->get_last_error = [](ArrowArrayStream *self) { return stream_of(self).last_error(); };
  out->release = release;
  out->private_data = stream.release();
}

const ArrowStream *own_stream(const ArrowArrayStream *stream) {
  if (stream == nullptr || stream->release != release) return nullptr;
  return static_cast<const ArrowStream *>(stream->private_data);
}

}  // namespace campotipo::records::face
