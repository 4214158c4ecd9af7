#pragma once

#include "command.h"
#include "tqdatastream.h"

#include <QString>

namespace store {

/// How a step ended: a result code with what the log and the operator read of a failure.
struct [[nodiscard]] Outcome
{
    int code = ResultSuccess;
    QString text; ///< whole sentences that say what is wrong
    QString advice; ///< what the operator can do; may be empty

    /// Whether it ended well.
    [[nodiscard]] bool ok() const { return code == ResultSuccess; }
    /// Both texts as one, for a message box or the terminal.
    [[nodiscard]] QString message() const { return advice.isEmpty() ? text : text + QLatin1Char(' ') + advice; }
    /// The answer that tells \a request of this failure.
    [[nodiscard]] Command replyTo(Command request) const
    {
        request.setResult(code);
        request.setPayload(advice.isEmpty() ? writePayload(text) : writePayload(text, advice));
        return request;
    }
};

} // namespace store
