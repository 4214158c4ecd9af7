#pragma once

#include "command.h"
#include "tqdatastream.h"

#include <QString>

namespace store {

/// The result of an operation: a code and, for a failure, texts for the log and the operator.
struct [[nodiscard]] Outcome
{
    int code = ResultSuccess;
    QString text; ///< what is wrong, in whole sentences
    QString advice; ///< what the operator can do; may be empty

    /// Whether the operation succeeded.
    [[nodiscard]] bool ok() const { return code == ResultSuccess; }
    /// Both texts in one, for a message box or the terminal.
    [[nodiscard]] QString message() const { return advice.isEmpty() ? text : text + QLatin1Char(' ') + advice; }
    /// The reply to \a request that reports this failure.
    [[nodiscard]] Command replyTo(Command request) const
    {
        request.setResult(code);
        request.setPayload(advice.isEmpty() ? writePayload(text) : writePayload(text, advice));
        return request;
    }
};

} // namespace store
