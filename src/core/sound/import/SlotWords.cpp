// SPDX-License-Identifier: MIT
#include "sound/import/SlotWords.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kestrin::core::sound {

namespace {

using Weight = SlotWords::Weight;

/// What a word stands for.
enum class Sense {
  Boot = static_cast<int>(SlotKind::Boot),
  PwrOn = static_cast<int>(SlotKind::PwrOn),
  PwrOff = static_cast<int>(SlotKind::PwrOff),
  Motion = static_cast<int>(SlotKind::Motion),
  Impact = static_cast<int>(SlotKind::Impact),
  Lockup = static_cast<int>(SlotKind::Lockup),
  Idle = static_cast<int>(SlotKind::Idle),
  /// A sound for which a saber has no slot.
  Other,
  /// Whatever else is said is less sure.
  Doubt,
};

/// Words of one sense and weight, with blanks between them; one that ends with "*" is the beginning of a word.
struct Words {
  Sense sense;
  Weight weight;
  std::string_view words;
};

// English first, then the short names of sound fonts, German, French, Spanish, Italian, Dutch, Portuguese.
constexpr std::array kWords{
    Words{Sense::Boot, Weight::Name,
          "boot* startup* font preboot* hochfahr* begrus* begruess* demarr* amorcage* arranque* arrancar avvio "
          "avviament* "
          "opstart* inicializa* inicio"},
    Words{Sense::Boot, Weight::Hint, "start starts intro welcome hello"},

    Words{
        Sense::PwrOn, Weight::Name,
        "ignit* poweron* powerup* pwron* pwrup* extend* extension* activat* turnon switchon unsheath* bladeout* preon* "
        "einschalt* anschalt* zund* zuend* entzund* ausfahr* aktivier* allum* activer encend* enciend* accen* attiva* "
        "aanzet* inschakel* ontsteek* ontstek* ligar ligado acend*"},
    Words{Sense::PwrOn, Weight::Short, "on out an ein aan"},
    Words{Sense::PwrOn, Weight::Hint, "power pwr open* unfold*"},

    Words{Sense::PwrOff, Weight::Name,
          "retra* poweroff* powerdown* pwroff* pwrdown* deactivat* turnoff switchoff shutdown* shutoff sheath* bladein "
          "pstoff* postoff* ausschalt* abschalt* einfahr* einzieh* deaktivier* herunterfahr* extinction* etein* "
          "desactiv* "
          "apag* spegn* disattiva* ritra* uitschakel* uitzet* intrek* deslig* recolh*"},
    Words{Sense::PwrOff, Weight::Short, "off in aus uit"},
    Words{Sense::PwrOff, Weight::Hint, "close* stop"},

    Words{
        Sense::Idle, Weight::Name,
        "hum hums humm* idle* drone* leerlauf* brumm* summen summ surr* bourdon* ronron* ralenti repos zumbid* reposo "
        "ronzi* riposo brom* zoem* gezoem stationair repouso"},
    Words{Sense::Idle, Weight::Hint, "loop loops buzz* steady"},

    Words{
        Sense::Motion, Weight::Name,
        "swing* swng* swg hswing* lswing* motion* move moves movement* moving spin* swoosh* swish* whoosh* twirl* "
        "schwung* schwuenge schwing* schwenk* bewegung* dreh* wirbel* balanc* mouvement* moulinet* rotat* movim* giro "
        "giros girar oscil* rotaz* rotac* zwaai* zwiep* beweging* draai*"},
    Words{Sense::Motion, Weight::Hint, "slash* turn turns wave*"},

    Words{Sense::Impact, Weight::Name,
          "clash* clsh* impact* hit hits strike* smash* treffer* aufprall* einschlag* schlag* zusammenprall* "
          "zusammensto* "
          "stoss choc chocs collision* coup coups heurt* golpe* choque* impatt* colpo colpi urto urti scontr* botsing* "
          "klap klappen inslag* slag slagen stoot colis* batida* pancada*"},
    Words{Sense::Impact, Weight::Hint,
          "blaster* blast* blst* bolt* shot* block* parry* parier* spark* bang* crash* deflect* contact*"},

    Words{Sense::Lockup, Weight::Name,
          "lock locks lockup* locked locking bgnlock* beginlock* endlock* drag drags bgndrag* enddrag* bladelock* "
          "verriegel* verkeil* schleif* verrou* blocage* bloque* arrastr* blocco blocchi trascin* vergrendel* blokke* "
          "blokka* sleep slepen trava travar arrasta*"},
    Words{Sense::Lockup, Weight::Hint, "melt* burn* lightning* stab*"},

    Words{Sense::Other, Weight::Name,
          "music* musik* musique* muziek* track* song* theme* quote* voice* zitat* citation* menu* volume* battery* "
          "batter* color* colour*"},
    Words{Sense::Other, Weight::Hint, "force*"},
    Words{Sense::Doubt, Weight::Hint, "blaster* blast* blst* bolt* shot* force*"},
};

/// Latin letters with marks, from U+00C0 to U+017F, as the letters A to Z that they are read as; blanks for signs.
constexpr std::string_view kPlain =
    "aaaaaaaceeeeiiiidnooooo ouuuuytsaaaaaaaceeeeiiiidnooooo ouuuuyty"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiiijjkkklllllll"
    "lllnnnnnnnnnoooooooorrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(kPlain.size() == 0x180 - 0xC0);

/// Whether a letter from U+00C0 to U+017F is a capital one.
constexpr bool IsCapitalMarked(std::uint32_t letter) {
  constexpr std::uint32_t kSharpS = 0xDF;
  constexpr std::uint32_t kPairs = 0x100;
  if (letter < kPairs) return letter < kSharpS;
  // From there on they come in pairs, of which the first one is capital.
  const bool beginOdd = (letter >= 0x139 && letter <= 0x148) || (letter >= 0x179 && letter <= 0x17E);
  return (letter % 2 == 1) == beginOdd;
}

/// A letter of a text, as it is compared.
struct Letter {
  char plain = ' ';
  bool isCapital = false;
  /// A mark that the letter before it carries: as if it were not there.
  bool isMark = false;
};

/// Takes the next character off the front of a UTF-8 text, one byte where it is none.
Letter TakeLetter(std::string_view& text) {
  const auto byte = [&text](std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(text[at]));
  };
  const std::uint32_t first = byte(0);
  if (first >= 'A' && first <= 'Z') {
    text.remove_prefix(1);
    return {static_cast<char>(first - 'A' + 'a'), true, false};
  }
  if (first < 0x80) {
    text.remove_prefix(1);
    return {first >= 'a' && first <= 'z' ? static_cast<char>(first) : ' ', false, false};
  }
  const bool isPair = first >= 0xC3 && first <= 0xDF && text.size() > 1 && (byte(1) & 0xC0) == 0x80;
  if (!isPair) {
    text.remove_prefix(1);
    return {};
  }
  const std::uint32_t letter = (first & 0x1F) << 6 | (byte(1) & 0x3F);
  text.remove_prefix(2);
  // Systems that take letters apart write the marks behind them.
  if (letter >= 0x300 && letter < 0x370) return {' ', false, true};
  if (letter >= 0x180) return {};
  return {kPlain[letter - 0xC0], IsCapitalMarked(letter), false};
}

/// How a word of the table is looked for in a word of a name.
enum class Search {
  Plain,   ///< as it stands
  Inside,  ///< anywhere in the word: "saberswing"
};

bool IsMeant(std::string_view entry, std::string_view word, Search search) {
  // Shorter ones are in too many words.
  constexpr std::size_t kLeastInside = 4;
  const bool isBeginning = entry.back() == '*';
  if (isBeginning) entry.remove_suffix(1);
  if (search == Search::Inside) return isBeginning && entry.size() >= kLeastInside && word.find(entry) != word.npos;
  return isBeginning ? word.starts_with(entry) : word == entry;
}

/// Whether one of the words in `list` that has more than `atLeast` letters is meant.
bool Holds(std::string_view list, std::string_view word, std::size_t atLeast, Search search) {
  while (!list.empty()) {
    const std::string_view entry = list.substr(0, list.find(' '));
    list.remove_prefix(std::min(list.size(), entry.size() + 1));
    if (entry.size() > atLeast && IsMeant(entry, word, search)) return true;
  }
  return false;
}

/// What the words of a name have said so far.
class Verdict {
 public:
  /// Hears what one word says; of two words as one it is only what neither says alone, which has more than `atLeast`
  /// letters.
  void Hear(std::string_view word, std::size_t atLeast, Search search) {
    for (const Words& words : kWords)
      if (Holds(words.words, word, atLeast, search))
        Take(words.sense, search == Search::Plain ? words.weight : Weight::Hint);
  }

  [[nodiscard]] std::optional<SlotWords::Meaning> Meaning() const {
    if (!m_sense) return std::nullopt;
    if (*m_sense == Sense::Other) return SlotWords::Meaning{std::nullopt, m_weight, m_isDoubtful};
    return SlotWords::Meaning{static_cast<SlotKind>(*m_sense), m_weight, m_isDoubtful || m_isContested};
  }

 private:
  void Take(Sense sense, Weight weight) {
    if (sense == Sense::Doubt) {
      m_isDoubtful = true;
    } else if (!m_sense || weight > m_weight) {
      m_sense = sense;
      m_weight = weight;
      m_isContested = false;
    } else if (weight == m_weight && sense != *m_sense) {
      // What comes first counts, a slot more than none.
      if (*m_sense == Sense::Other) m_sense = sense;
      m_isContested = true;
    }
  }

  std::optional<Sense> m_sense;
  Weight m_weight = Weight::Hint;
  bool m_isDoubtful = false;
  bool m_isContested = false;
};

}  // namespace

std::vector<std::string> SlotWords::In(std::string_view text) {
  std::vector<std::string> words;
  bool isInWord = false;
  bool wasCapital = false;
  while (!text.empty()) {
    const Letter letter = TakeLetter(text);
    if (letter.isMark) continue;
    if (letter.plain == ' ') {
      isInWord = false;
      continue;
    }
    if (!isInWord || (letter.isCapital && !wasCapital)) words.emplace_back();
    words.back() += letter.plain;
    isInWord = true;
    wasCapital = letter.isCapital;
  }
  return words;
}

std::optional<SlotWords::Meaning> SlotWords::MeaningOf(std::string_view text) {
  const std::vector<std::string> words = In(text);
  for (const Search search : {Search::Plain, Search::Inside}) {
    Verdict verdict;
    for (std::size_t i = 0; i < words.size(); ++i) {
      verdict.Hear(words[i], 0, search);
      // "power on", "lock-up".
      if (i + 1 < words.size() && search == Search::Plain)
        verdict.Hear(words[i] + words[i + 1], words[i].size(), search);
    }
    if (const std::optional<Meaning> meaning = verdict.Meaning()) return meaning;
  }
  return std::nullopt;
}

}  // namespace kestrin::core::sound
