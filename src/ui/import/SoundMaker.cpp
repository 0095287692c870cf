// SPDX-License-Identifier: MIT
#include "ui/import/SoundMaker.h"

#include <system_error>
#include <utility>

#include "core/base/PathText.h"
#include "ui/kit/Translated.h"

namespace kestrin::ui::imports {

using core::base::Result;
using core::sound::ImportedSound;
using core::sound::ImportSource;
using kit::LatestJob;

namespace fs = std::filesystem;

namespace {

/// Copies the files one by one; when one cannot be copied, or somebody has stopped it, those before it go again.
Result<SoundMaker::Kept> KeepAll(const ImportMeans& means, const std::vector<SoundMaker::Made>& files,
                                 const fs::path& folder, const LatestJob::GoOn& goOn) {
  std::error_code error;
  const bool isNew = fs::create_directories(folder, error);
  if (error) {
    const core::base::Failure why = core::base::FailureOf(error);
    return core::base::Failure{why.kind, "The folder " + core::base::Quoted(folder) + " cannot be made: " + why.text +
                                             ". Choose another folder and try again."};
  }
  SoundMaker::Kept kept;
  core::base::Failure why{core::base::FailureKind::Cancelled, "Stopped."};
  for (const SoundMaker::Made& file : files) {
    if (!goOn()) break;
    Result<fs::path> copy = means.keep(file.file, folder);
    if (!copy) {
      why = copy.Why();
      break;
    }
    kept.push_back({file.id, *std::move(copy)});
  }
  if (kept.size() == files.size() && goOn()) return kept;
  for (const SoundMaker::Made& file : kept) fs::remove(file.file, error);
  if (isNew) fs::remove(folder, error);
  return why;
}

}  // namespace

SoundMaker::SoundMaker(ImportMeans means, QObject* parent) : QObject(parent), m_means(std::move(means)) {}

void SoundMaker::List(const std::vector<fs::path>& named) {
  m_toList.insert(m_toList.end(), named.begin(), named.end());
  if (!m_isListing) ListNext();
}

void SoundMaker::ListNext() {
  m_isListing = !m_toList.empty();
  if (!m_isListing) return;
  const fs::path named = m_toList.front();
  m_toList.erase(m_toList.begin());
  m_listing.Start([this, named, list = m_means.list](const LatestJob::GoOn& goOn, const LatestJob::Deliver& deliver) {
    deliver([this, named, found = list({named}, goOn)] {
      m_keepers.push_back(found.keeper);
      const bool isLast = m_toList.empty();
      emit listed(named, found.sources, isLast);
      ListNext();
    });
  });
}

Result<fs::path> SoundMaker::NewFolder() {
  if (m_folder == nullptr) {
    Result<core::base::PrivateFolder> made = core::base::PrivateFolder::Make();
    if (!made) return made.Why();
    m_folder = std::make_shared<core::base::PrivateFolder>(*std::move(made));
  }
  fs::path folder = m_folder->Path() / std::to_string(m_nextFolder++);
  std::error_code failed;
  fs::create_directory(folder, failed);
  if (failed) return core::base::FailureOf(failed);
  return folder;
}

void SoundMaker::Make(std::vector<Order> orders) {
  m_making.Cancel();
  if (orders.empty()) return;
  const Result<fs::path> folder = NewFolder();
  if (!folder) {
    for (const Order& order : orders) {
      ImportedSound failed;
      failed.source = order.source.shownAs;
      failed.reason = "There is no place to make it ready. " + folder.Text();
      emit made(order.id, failed, order.options);
    }
    return;
  }
  m_making.Start([this, folder = *folder, keeper = m_folder, orders = std::move(orders), convert = m_means.convert](
                     const LatestJob::GoOn& goOn, const LatestJob::Deliver& deliver) {
    std::vector<core::sound::ImportCrew::Order> work;
    for (const Order& order : orders) work.push_back({order.source, order.options});
    const auto done = [&](std::size_t number, ImportedSound sound) {
      // What was given up is no news.
      if (!goOn()) return;
      deliver(
          [this, order = orders.at(number), sound = std::move(sound)] { emit made(order.id, sound, order.options); });
    };
    convert(work, folder, done, goOn);
  });
}

void SoundMaker::Copy(int id, const fs::path& sound) {
  const Result<fs::path> folder = NewFolder();
  if (!folder) {
    emit copied(id, {}, kit::Translated(folder.Text()));
    return;
  }
  m_copying.Start([this, id, sound, copy = *folder / "before.lsu", keeper = m_folder, write = m_means.copy](
                      const LatestJob::GoOn& goOn, const LatestJob::Deliver& deliver) {
    const Result<> written = write(sound, copy, goOn);
    deliver([this, id, copy, text = written.Text()] {
      emit copied(id, text.empty() ? copy : fs::path(), kit::Translated(text));
    });
  });
}

void SoundMaker::Measure(std::vector<core::sound::Levelling::Sound> staying, std::vector<Coming> coming) {
  m_keeping.Start([this, sounds = std::move(staying), coming = std::move(coming), keeper = m_folder,
                   measure = m_means.measure](const LatestJob::GoOn& goOn, const LatestJob::Deliver& deliver) mutable {
    for (const Coming& one : coming) {
      sounds.push_back({one.place, {}});
      static_cast<void>(sounds.back().file.ReadFile(one.file));
    }
    const Result<Measured> all = measure(sounds, goOn);
    deliver([this, found = all ? *all : Measured()] { emit measured(found); });
  });
}

void SoundMaker::Keep(std::vector<Made> files, const fs::path& folder) {
  if (files.empty()) {
    emit kept({});
    return;
  }
  m_keeping.Start([this, files = std::move(files), folder, keeper = m_folder, means = m_means](
                      const LatestJob::GoOn& goOn, const LatestJob::Deliver& deliver) {
    const Result<Kept> all = KeepAll(means, files, folder, goOn);
    deliver([this, all] {
      if (all)
        emit kept(*all);
      else
        emit notKept(kit::Translated(all.Text()));
    });
  });
}

void SoundMaker::Stop() {
  for (LatestJob* const job : {&m_listing, &m_making, &m_copying, &m_keeping}) job->Cancel();
  m_toList.clear();
  m_isListing = false;
  m_folder.reset();
  m_keepers.clear();
}

}  // namespace kestrin::ui::imports
