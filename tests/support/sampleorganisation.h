#pragma once

#include "objects.h"

/// A small organisation.
namespace organisation {

constexpr quint32 Root = 1;
constexpr quint32 Firm = 2;
constexpr quint32 Office = 3;
constexpr quint32 Plant = 4;
constexpr quint32 Ivanova = 20; ///< in the office; number "0017", main schedule 7
constexpr quint32 Petrov = 21; ///< in the plant; number "0042", no main schedule
constexpr quint32 Markup = 22; ///< in the plant; the name looks like markup, the main schedule is unknown
constexpr quint32 Gone = 23; ///< in the plant; deleted
constexpr int MainSchedule = 7;

/// Stores employees as persons and as leaves of the organisation's tree.
void storeEmployees(const QList<orvex::ObjectInfo> &employees, const QList<quint32> &removed = {});

/// Replaces the client's cache by this organisation, its main schedule and the sample guide.
void fill();

} // namespace organisation
