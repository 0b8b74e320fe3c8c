// Private shorthands for the posting and filling failure channels.
#pragma once

#include <tyx/TyxTextMsg.h>

/// Posts an Error with \p text from the current source position.
#define TYX_POST_ERROR(text)                                                                                 \
    ::tyx::postMessage(::tyx::TyxTextMsg((text), __FILE__, __LINE__, ::tyx::TyxTextMsg::Error))

/// Posts a Warning with \p text from the current source position.
#define TYX_POST_WARNING(text)                                                                               \
    ::tyx::postMessage(::tyx::TyxTextMsg((text), __FILE__, __LINE__, ::tyx::TyxTextMsg::Warning))

/// Fills an Error into \p msgPtr when it is not null; \p text is built only then.
#define TYX_FILL_ERROR(msgPtr, text)                                                                         \
    do {                                                                                                     \
        if (msgPtr)                                                                                          \
            (msgPtr)->setText((text), __FILE__, __LINE__, ::tyx::TyxTextMsg::Error);                         \
    } while (false)

/// Throws an Error with \p text from the current source position.
#define TYX_THROW_ERROR(text) throw ::tyx::TyxTextMsg((text), __FILE__, __LINE__, ::tyx::TyxTextMsg::Error)

/// An Error with \p text from the current source position, for the channel
/// that returns the message.
#define TYX_ERROR_MSG(text) ::tyx::TyxTextMsg((text), __FILE__, __LINE__, ::tyx::TyxTextMsg::Error)
