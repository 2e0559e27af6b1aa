// Plays a recorded line session: what comes from the meter and what the operator does, in virtual time on the
// whole program. tests/sessions/README.md tells the language of the files.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// How the bytes of a session come in. What the program makes of them must not depend on it.
enum class Arrival {
  kWhole,   ///< each line of the file at once
  kBytes,   ///< each byte by itself
  kTorn,    ///< in pieces of a few bytes, milliseconds apart where the session has time for it
  kMerged,  ///< lines with nothing but short pauses between them all at once
};
inline constexpr std::pair<Arrival, const char*> kArrivals[] = {{Arrival::kWhole, "whole"},
                                                                {Arrival::kBytes, "byte by byte"},
                                                                {Arrival::kTorn, "torn"},
                                                                {Arrival::kMerged, "merged"}};

/// What the program shows: name and value, in the order in which a person reads them.
using Fields = std::vector<std::pair<std::string, std::string>>;

/// One line of a file; after a "show" what the program showed then.
struct Played {
  std::string line;
  bool result = false;               ///< a line of expected results, "= name value"
  std::vector<std::string> changed;  ///< of a "show": what is new since the one before, as result lines
  Fields all;                        ///< of a "show": everything
};

/// @throws std::invalid_argument with the number of the line that is no line of a session
std::vector<Played> Play(const std::vector<std::string>& lines, Arrival arrival);

}  // namespace orvane
