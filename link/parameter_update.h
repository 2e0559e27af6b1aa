#pragma once

#include "link/link_context.h"
#include "link/parameter_record.h"
#include "link/transmitter.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// Sends changed settings to the meter. Each change is followed by its query, so that the state shows what
/// the meter accepted; a refused value is not reported. docs/protocol.md, "Changing a parameter".
class ParameterUpdate {
 public:
  ParameterUpdate(const LinkContext& link, Transmitter& transmitter)
      : link_(link), transmitter_(transmitter) {}

  /// Sends what differs between the two records, and the call message if it was edited. Events go on
  /// meanwhile; the records are copies, so that the panel can be used.
  void UpdateMeterParameters(ParameterRecord pending, ParameterRecord current);
  /// One setting and its query ("T-3", "T?"), 125 ms after each.
  void ChangeSetting(char letter, std::int16_t value);
  /// The call message, of which the meter takes 16 characters, and its query.
  void SendCallMessage(std::string_view text);

  /// Shows the given text in the message labels, zeros slashed. Without `use_given` the meter's own message
  /// is shown (and kept) with its zeros slashed; while it is empty, the given text as it stands.
  void ShowCallMessage(std::string_view text, bool use_given);

 private:
  void SendAndQuery(std::string command);

  LinkContext link_;
  Transmitter& transmitter_;
};

}  // namespace orvane
