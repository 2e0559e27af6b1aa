#include "platform/headless/profile_store.h"

#include "base/text.h"

#include <algorithm>
#include <vector>

namespace orvane {
namespace {

// What counts as blank at the ends of names and values; the last one is the end mark of old text files.
constexpr std::string_view kBlanks = " \t\v\f\x1a";

std::string_view TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The system's calls know texts by their closing NUL.
std::string_view UpToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

std::string_view WithoutQuotes(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

// A line of the file by its place in the text, without its end.
struct Line {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string_view name;                  // of an entry
  std::optional<std::string_view> value;  // of an entry that has an equals sign
};

// A section: its header line and what follows up to the next header. The first one stands for the lines
// before all headers and has no name.
struct Section {
  std::string_view name;
  std::size_t begin = 0;  // of the header
  std::size_t body = 0;   // after the header and its line end
  std::size_t end = 0;
  std::vector<Line> entries;
};

std::size_t AfterLineEnd(std::string_view text, std::size_t at) {
  if (text.substr(at, 2) == "\r\n") return at + 2;
  return at < text.size() ? at + 1 : at;
}

Line ReadEntry(std::string_view text, std::size_t begin, std::size_t end) {
  Line line{begin, end, {}, {}};
  const auto content = TrimBlanks(text.substr(begin, end - begin));
  const auto equals = content.find('=');
  line.name = UpToNul(TrimBlanks(content.substr(0, equals)));
  if (equals != std::string_view::npos) line.value = UpToNul(TrimBlanks(content.substr(equals + 1)));
  return line;
}

std::vector<Section> ReadSections(std::string_view text) {
  std::vector<Section> sections(1);
  std::size_t begin = 0;
  while (begin < text.size()) {
    const auto end = std::min(text.find_first_of("\r\n", begin), text.size());
    const auto next = AfterLineEnd(text, end);
    const auto content = TrimBlanks(text.substr(begin, end - begin));
    const auto bracket = content.starts_with('[') ? content.rfind(']') : std::string_view::npos;
    if (bracket != std::string_view::npos) {
      sections.back().end = begin;
      sections.push_back({UpToNul(TrimBlanks(content.substr(1, bracket - 1))), begin, next, 0, {}});
    } else if (!content.empty() && content.front() != ';') {
      sections.back().entries.push_back(ReadEntry(text, begin, end));
    }
    begin = next;
  }
  sections.back().end = text.size();
  return sections;
}

const Section* FindSection(const std::vector<Section>& sections, std::string_view name) {
  const auto wanted = TrimBlanks(UpToNul(name));
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const Section& section) { return EqualNoCase(section.name, wanted); });
  return found == sections.end() ? nullptr : &*found;
}

const Line* FindEntry(const Section* section, std::string_view key) {
  if (section == nullptr) return nullptr;
  const auto wanted = TrimBlanks(UpToNul(key));
  const auto found = std::find_if(section->entries.begin(), section->entries.end(),
                                  [&](const Line& line) { return EqualNoCase(line.name, wanted); });
  return found == section->entries.end() ? nullptr : &*found;
}

std::string SectionNames(const std::vector<Section>& sections) {
  std::string names;
  for (const Section& section : sections) {
    if (!section.name.empty()) names.append(section.name).push_back('\0');
  }
  return names;
}

std::string KeyNames(const Section* section) {
  std::string names;
  if (section == nullptr) return names;
  for (const Line& line : section->entries) {
    if (line.value) names.append(line.name).push_back('\0');
  }
  return names;
}

// Adds `line` behind `at`, or behind the last text before it: blank lines in front of the next header stay
// there.
void InsertLine(std::string& text, std::size_t at, std::size_t not_before, std::string_view line) {
  const auto last = std::string_view(text).substr(0, at).find_last_not_of("\r\n");
  if (last != std::string_view::npos) not_before = std::max(not_before, AfterLineEnd(text, last + 1));
  const bool unfinished = not_before > 0 && text[not_before - 1] != '\n' && text[not_before - 1] != '\r';
  text.insert(not_before, (unfinished ? "\r\n" : "") + std::string(line) + "\r\n");
}

void SetEntry(std::string& text, std::string_view section_name, std::string_view key,
              std::string_view value) {
  const auto sections = ReadSections(text);
  const Section* section = FindSection(sections, section_name);
  const Line* entry = FindEntry(section, key);
  // A key that is there keeps the letter case in which it was written.
  std::string line(entry != nullptr ? entry->name : TrimBlanks(UpToNul(key)));
  line.append("=").append(UpToNul(value));
  if (entry != nullptr) {
    if (entry->value != TrimBlanks(UpToNul(value)))
      text.replace(entry->begin, entry->end - entry->begin, line);
  } else if (section != nullptr) {
    InsertLine(text, section->end, section->body, line);
  } else {
    const std::string header = "[" + std::string(TrimBlanks(UpToNul(section_name))) + "]\r\n";
    InsertLine(text, text.size(), text.size(), header + line);
  }
}

void RemoveEntry(std::string& text, std::string_view section, std::string_view key) {
  const auto sections = ReadSections(text);
  if (const Line* entry = FindEntry(FindSection(sections, section), key)) {
    text.erase(entry->begin, AfterLineEnd(text, entry->end) - entry->begin);
  }
}

void RemoveSection(std::string& text, std::string_view name) {
  const auto sections = ReadSections(text);
  if (const Section* section = FindSection(sections, name)) {
    text.erase(section->begin, section->end - section->begin);
  }
}

void EmptySection(std::string& text, std::string_view name) {
  const auto sections = ReadSections(text);
  const auto wanted = TrimBlanks(UpToNul(name));
  if (FindSection(sections, name) == nullptr) {
    InsertLine(text, text.size(), text.size(), "[" + std::string(wanted) + "]");
    return;
  }
  // Every section of that name; from the last one on, so that the places of those before stay right.
  for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
    if (EqualNoCase(section->name, wanted)) text.erase(section->body, section->end - section->body);
  }
}

}  // namespace

std::string HeadlessProfileStore::GetPrivateProfileString(OptionalText section, OptionalText key,
                                                          std::string_view fallback, std::size_t buffer_size,
                                                          const std::string& file) {
  const std::string text = files_.Content(file).value_or("");
  const auto sections = ReadSections(text);
  const auto room = std::max<std::size_t>(buffer_size, 1) - 1;
  const auto list_room = std::max<std::size_t>(buffer_size, 2) - 2;
  if (!section) return SectionNames(sections).substr(0, list_room);
  const Section* found = FindSection(sections, *section);
  if (!key) {
    const auto names = KeyNames(found);
    if (!UpToNul(names).empty()) return names.substr(0, list_room);
  } else if (const Line* entry = FindEntry(found, *key); entry != nullptr && entry->value) {
    return std::string(WithoutQuotes(*entry->value).substr(0, room));
  }
  return std::string(WithoutQuotes(TrimRight(UpToNul(fallback))).substr(0, room));
}

template <typename Edit>
bool HeadlessProfileStore::Change(const std::string& file, Edit edit) {
  const bool missing = !files_.IsNormalFile(file);
  const auto before = files_.Content(file);
  if (!before && !missing) return false;
  std::string text = before.value_or("");
  edit(text);
  return text == before.value_or("") || files_.Replace(file, text);
}

bool HeadlessProfileStore::WritePrivateProfileString(std::string_view section, OptionalText key,
                                                     OptionalText value, const std::string& file) {
  return Change(file, [&](std::string& text) {
    if (!key) {
      RemoveSection(text, section);
    } else if (!value) {
      RemoveEntry(text, section, *key);
    } else {
      SetEntry(text, section, *key, *value);
    }
  });
}

bool HeadlessProfileStore::WriteEmptySection(std::string_view section, const std::string& file) {
  return Change(file, [&](std::string& text) { EmptySection(text, section); });
}

}  // namespace orvane
