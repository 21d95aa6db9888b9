#pragma once
// The UNO side of the engine, for the backend's own sources only.
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <rtl/ustring.hxx>

#include "base/Text.hpp"

namespace tq::calc {

struct UnoSession {
  css::uno::Reference<css::uno::XComponentContext> local;
  css::uno::Reference<css::uno::XComponentContext> remote;
  css::uno::Reference<css::frame::XDesktop2> desktop;
};

// Both sides are UTF-16 (sal_Unicode is a 16-bit unsigned type): the code units pass unchanged.
inline rtl::OUString ToOUString(TextView text) {
  return rtl::OUString(reinterpret_cast<const sal_Unicode*>(text.data()), sal_Int32(text.size()));
}
inline Text FromOUString(const rtl::OUString& text) {
  return Text(reinterpret_cast<const char16_t*>(text.getStr()), size_t(text.getLength()));
}

}  // namespace tq::calc
