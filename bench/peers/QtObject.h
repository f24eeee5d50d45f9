#pragma once

#include <QObject>
#include <QString>

/// A Qt class with the same members as the host class of the benchmarks.
class QtObject : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString symbol READ symbol WRITE setSymbol)
  Q_PROPERTY(QString name READ name WRITE setName)
  Q_PROPERTY(int code READ code WRITE setCode)

 public:
  QtObject() = default;
  QString symbol() const { return mSymbol; }
  void setSymbol(const QString& symbol) { mSymbol = symbol; }
  QString name() const { return mName; }
  void setName(const QString& name) { mName = name; }
  int code() const { return mCode; }
  void setCode(int code) { mCode = code; }
  Q_INVOKABLE bool isValid() const { return true; }

 private:
  QString mSymbol;
  QString mName;
  int mCode = 7;
};
