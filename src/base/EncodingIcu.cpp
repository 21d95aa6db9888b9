// UTF-8, the code pages, case folding and the half-width mapping through ICU (POSIX).
#include <unicode/translit.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <stdexcept>

#include "base/Encoding.hpp"
#include "base/TextEngine.hpp"

namespace tq {

namespace {

struct ConverterCloser {
  void operator()(UConverter* c) const { ucnv_close(c); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter OpenConverter(const std::string& name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter c(ucnv_open(name.c_str(), &status));
  if (U_FAILURE(status) || !c) throw std::invalid_argument("unknown code page: " + name);
  return c;
}

}  // namespace

bool engine::EqualFolded(TextView a, TextView b) {
  UErrorCode status = U_ZERO_ERROR;
  int32_t r = u_strCaseCompare(a.data(), static_cast<int32_t>(a.size()), b.data(), static_cast<int32_t>(b.size()),
                               U_FOLD_CASE_DEFAULT, &status);
  return U_SUCCESS(status) && r == 0;
}

std::string ToUtf8(TextView text) {
  std::string out;
  icu::UnicodeString(false, text.data(), static_cast<int32_t>(text.size())).toUTF8String(out);
  return out;
}

Text FromUtf8(std::string_view bytes) {
  icu::UnicodeString u = icu::UnicodeString::fromUTF8(icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())));
  return Text(u.getBuffer(), static_cast<size_t>(u.length()));
}


bool IsValidUtf8(std::string_view bytes) {
  int32_t i = 0, n = static_cast<int32_t>(bytes.size());
  const auto* s = reinterpret_cast<const uint8_t*>(bytes.data());
  while (i < n) {
    UChar32 c;
    U8_NEXT(s, i, n, c);
    if (c < 0) return false;
  }
  return true;
}

// ICU converters keep state: one conversion at a time (the DXF reader decodes on two threads).
struct CodePage::Converters {
  Converter decoder, bestFit, exact;
  std::mutex lock;
};

Result<CodePage> CodePage::Open(const std::string& name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter probe(ucnv_open(name.c_str(), &status));
  if (U_FAILURE(status) || !probe) return MakeError(ErrorCode::InvalidValue, "unknown code page: " + name);
  return CodePage(name);
}

CodePage::CodePage(const std::string& name) : name_(name), converters_(std::make_unique<Converters>()) {
  converters_->decoder = OpenConverter(name);
  converters_->bestFit = OpenConverter(name);
  converters_->exact = OpenConverter(name);
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setSubstChars(converters_->bestFit.get(), "?", 1, &status);
  ucnv_setFallback(converters_->bestFit.get(), true);  // best-fit, as WideCharToMultiByte does by default
  status = U_ZERO_ERROR;
  ucnv_setFromUCallBack(converters_->exact.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
}

CodePage::~CodePage() = default;
CodePage::CodePage(CodePage&&) noexcept = default;
CodePage& CodePage::operator=(CodePage&&) noexcept = default;

Text CodePage::Decode(std::string_view bytes) const {
  std::lock_guard<std::mutex> guard(converters_->lock);
  Text out(bytes.size() * 2 + 1, u'\0');
  UErrorCode status = U_ZERO_ERROR;
  ucnv_resetToUnicode(converters_->decoder.get());
  int32_t n = ucnv_toUChars(converters_->decoder.get(), out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                            static_cast<int32_t>(bytes.size()), &status);
  if (U_FAILURE(status)) return Text();
  out.resize(static_cast<size_t>(n));
  return out;
}

namespace {
std::optional<std::string> FromUnicode(UConverter* c, TextView text) {
  ucnv_resetFromUnicode(c);
  UErrorCode status = U_ZERO_ERROR;
  std::string out(text.size() * 4 + 4, '\0');
  int32_t n = ucnv_fromUChars(c, out.data(), static_cast<int32_t>(out.size()), text.data(),
                              static_cast<int32_t>(text.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  out.resize(static_cast<size_t>(n));
  return out;
}
}  // namespace

std::string CodePage::Encode(TextView text) const {
  std::lock_guard<std::mutex> guard(converters_->lock);
  return FromUnicode(converters_->bestFit.get(), text).value_or(std::string());
}

std::optional<std::string> CodePage::EncodeExact(TextView text) const {
  std::lock_guard<std::mutex> guard(converters_->lock);
  return FromUnicode(converters_->exact.get(), text);
}

// The Hangul letters keep their form (see HangulLetter in EncodingWin32.cpp).
constexpr const char* kHalfWidth = "[^\\u1100-\\u11FF\\u3130-\\u318F];Fullwidth-Halfwidth";

Text ToHalfWidth(TextView text) {
  // Nothing below the Hangul letters (U+1100) has a half-width form, and most sheet names are
  // plain ASCII: they need no transliterator, whose first use costs tens of milliseconds.
  if (std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x1100; })) return Text(text);
  // The transliterator is built once; building it costs far more than using it.
  thread_local std::unique_ptr<icu::Transliterator> halfWidth = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> t(
        icu::Transliterator::createInstance(kHalfWidth, UTRANS_FORWARD, status));
    return U_SUCCESS(status) ? std::move(t) : nullptr;
  }();
  icu::UnicodeString u(text.data(), static_cast<int32_t>(text.size()));
  if (halfWidth) halfWidth->transliterate(u);
  return Text(u.getBuffer(), static_cast<size_t>(u.length()));
}

}  // namespace tq
