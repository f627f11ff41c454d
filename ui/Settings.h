// What the window remembers between runs. Reading needs only QSettings.
#pragma once

class QString;
class QVariant;

namespace cabslot {

/// Stores a setting at once. The first time that this fails, a line on standard error says so: the
/// window works the same without.
void storeSetting(const QString& key, const QVariant& value);

} // namespace cabslot
