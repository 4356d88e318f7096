#pragma once

#include <QString>
#include <QtGlobal>

// What tests need of the operating system.
namespace testing_support {

/// Makes the socket's end a reset of its connection.
void resetAtEnd(qintptr socket);

/// Makes "slow.bat", "header" and "audio" in the folder: a batch whose process runs until
/// endSlowBatch(), and makes "out" of the texts "header" and "audio".
void makeSlowBatch(const QString &folder);
void endSlowBatch(const QString &folder);

/// "é", or "e" where the command interpreter cannot read it in a batch.
QString accentForBatches();

} // namespace testing_support
