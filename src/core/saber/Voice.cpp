// SPDX-License-Identifier: MIT
#include "saber/Voice.h"

#include <utility>

namespace kestrin::core::saber {

double Voice::Next() {
  if (HasEnded()) return 0;
  m_isHeard = true;
  double sample = (*m_samples)[m_at];
  if (m_beforeLeft > 0) {
    const double before = m_at < m_before->size() ? (*m_before)[m_at] : 0;
    sample += (before - sample) * m_beforeLeft-- / kFade;
  }
  ++m_at;
  if (m_isLoop && m_at == m_samples->size()) m_at = 0;
  if (m_fades) sample *= static_cast<double>(m_left--) / kFade;
  return sample;
}

void Voice::Stop() { m_fades = true; }

void Voice::Exchange(SharedSamples samples) {
  m_before = std::exchange(m_samples, std::move(samples));
  m_beforeLeft = kFade;
  if (m_isLoop && m_at >= Size()) m_at = 0;
}

}  // namespace kestrin::core::saber
