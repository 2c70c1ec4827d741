// The component's string table. Texts stand exactly as the user sees them; "%1" is the product name.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tolvan {

class HostApplication;

namespace text_id {
inline constexpr std::int32_t acceptButton = 101;
inline constexpr std::int32_t cancelButton = 102;
inline constexpr std::int32_t closeButton = 103;
inline constexpr std::int32_t dailySalesFile = 1001;
inline constexpr std::int32_t salesServer = 1002;
inline constexpr std::int32_t movilnetPrices = 1003;
inline constexpr std::int32_t dataTerminal = 1004;
inline constexpr std::int32_t excelSheet = 1005;
inline constexpr std::int32_t taxpayerRegistry = 1006;
inline constexpr std::int32_t cannotSaveRetry = 10001;
inline constexpr std::int32_t pathError = 10002;
inline constexpr std::int32_t success = 10003;
inline constexpr std::int32_t storeCodeLabel = 35000;
inline constexpr std::int32_t reportDateLabel = 35001;
inline constexpr std::int32_t endOfDayLabel = 35002;
inline constexpr std::int32_t folderLabel = 35003;
inline constexpr std::int32_t sendMailLabel = 35004;
inline constexpr std::int32_t mailAddressLabel = 35005;
inline constexpr std::int32_t introduction = 35006;
inline constexpr std::int32_t chooseCategory = 35007;
inline constexpr std::int32_t errorsHappened = 35008;
inline constexpr std::int32_t folderPickerTitle = 35009;
inline constexpr std::int32_t forcedNameLabel = 35010;
inline constexpr std::int32_t introductionHint = 35383;
inline constexpr std::int32_t cannotLoadSettings = 35388;
inline constexpr std::int32_t cannotSaveSettings = 35389;
inline constexpr std::int32_t invalidMailAddress = 35594;
inline constexpr std::int32_t newItemsExplanation = 35721;
inline constexpr std::int32_t updatedItemsExplanation = 35722;
inline constexpr std::int32_t unprocessedExplanation = 35723;
inline constexpr std::int32_t cannotSendByMail = 45200;
inline constexpr std::int32_t mailSendingError = 45201;
inline constexpr std::int32_t mailLoginError = 45202;
inline constexpr std::int32_t mailUndefinedError = 45203;
inline constexpr std::int32_t mailOutOfMemory = 45204;
inline constexpr std::int32_t mailUnspecifiedError = 45205;
inline constexpr std::int32_t mailAttachmentAccess = 45206;
inline constexpr std::int32_t mailAttachmentFailure = 45207;
inline constexpr std::int32_t mailCancelled = 45208;
inline constexpr std::int32_t mailServiceMissing = 45209;
inline constexpr std::int32_t windowCaption = 50001;
}  // namespace text_id

/// The text of the table; empty for an id that it does not hold.
std::string_view ResourceText(std::int32_t id);

/// ResourceText with every "%1" replaced by the host's product name. Never throws: a failure gives an empty text.
std::string LoadText(HostApplication& application, std::int32_t id) noexcept;

}  // namespace tolvan
