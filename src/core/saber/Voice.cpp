// SPDX-License-Identifier: MIT
#include "saber/Voice.h"

namespace kestrin::core::saber {

double Voice::Next() {
  if (HasEnded()) return 0;
  double sample = m_samples[m_at++];
  if (m_isLoop && m_at == m_samples.size()) m_at = 0;
  if (m_fades) sample *= static_cast<double>(m_left--) / kFade;
  return sample;
}

void Voice::Stop() { m_fades = true; }

}  // namespace kestrin::core::saber
