// SPDX-License-Identifier: MIT
#include "platform/audio/SoxrConverter.h"

#include <soxr.h>

#include <new>
#include <stdexcept>

#include "core/sound/LSU_SoundFile.h"

namespace kestrin::platform::audio {

namespace {

constexpr int kTo = core::sound::LSU_SoundFile::kSamplesPerSecond;
constexpr std::size_t kOutput = 8192;

}  // namespace

void SoxrConverter::Deleter::operator()(soxr* converter) const { soxr_delete(converter); }

SoxrConverter::SoxrConverter(int rate) {
  if (rate == kTo) return;
  const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
  const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT64_I, SOXR_FLOAT64_I);
  // Several sounds at once make better use of several cores.
  const soxr_runtime_spec_t runtime = soxr_runtime_spec(1);
  m_soxr.reset(soxr_create(rate, kTo, 1, nullptr, &io, &quality, &runtime));
  if (!m_soxr) throw std::bad_alloc();
  m_block.resize(kOutput);
}

void SoxrConverter::Process(std::span<const double> in, std::vector<double>& out) {
  const double* const first = in.empty() ? nullptr : in.data();
  std::size_t used = 0;
  std::size_t made = 0;
  do {
    std::size_t taken = 0;
    const soxr_error_t error = soxr_process(m_soxr.get(), first == nullptr ? nullptr : first + used, in.size() - used,
                                            &taken, m_block.data(), m_block.size(), &made);
    if (error != nullptr) throw std::runtime_error(error);
    used += taken;
    out.insert(out.end(), m_block.begin(), m_block.begin() + static_cast<std::ptrdiff_t>(made));
    // At the end all has come once nothing more comes.
  } while (used < in.size() || made == m_block.size() || (first == nullptr && made > 0));
}

void SoxrConverter::Convert(std::span<const double> in, std::vector<double>& out) {
  if (!m_soxr)
    out.insert(out.end(), in.begin(), in.end());
  else if (!in.empty())
    Process(in, out);
}

void SoxrConverter::Finish(std::vector<double>& out) {
  if (m_soxr) Process({}, out);
}

}  // namespace kestrin::platform::audio
