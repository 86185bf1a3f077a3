#pragma once

#include <QString>

/// The words of the provider, apart from the repositories' (svn/repository_texts.h).
namespace quenvolta::replies
{

/// A text with the inserts %1, %2.
class Text
{
public:
    constexpr explicit Text(const char16_t* text)
        : m_text(text)
    {
    }
    template <typename... Inserts>
    QString arg(const Inserts&... inserts) const
    {
        return QStringView(m_text).toString().arg(inserts...);
    }
    QString Whole() const { return QStringView(m_text).toString(); }

private:
    const char16_t* m_text;
};

inline constexpr Text kCannotMakeDataFolder{u"Cannot create the server's data folder '%1': %2."};
inline constexpr Text kCannotBecomeAccount{u"Cannot work as the account '%1' of the server's data folder '%2': %3."};
inline constexpr Text kDataFolderIsFile{u"The server's data folder '%1' is not a folder."};
inline constexpr Text kCannotReadSettings{u"Cannot read or write the server's settings in '%1': %2"};
inline constexpr Text kNoRepositoriesRoot{u"The server has no folder for its repositories ('%1' is not an absolute "
                                          u"path). Choose one in the server's properties."};
inline constexpr Text kFolderBusy{u"Another process has been changing the server in '%1' for too long. Try again."};
inline constexpr Text kCannotLock{u"Cannot lock the server's data folder '%1': %2."};

inline constexpr Text kUnknownNamespace{u"The server has no namespace '%1'."};
inline constexpr Text kUnknownClass{u"The server has no class '%1'."};
inline constexpr Text kInvalidPath{u"'%1' is not the path of an object."};
inline constexpr Text kWrongKeys{u"The path '%1' does not have the keys of the class '%2'."};
inline constexpr Text kNoInstances{u"The class '%1' has no instances of its own."};
inline constexpr Text kObjectMissing{u"The object '%1' does not exist on the server."};
inline constexpr Text kUnknownMethod{u"The class '%1' has no method '%2'."};
inline constexpr Text kNeedsInstance{u"The method '%1.%2' needs an object, and a class was named."};
inline constexpr Text kNeedsClass{u"The method '%1.%2' belongs to the class, and an object was named."};
inline constexpr Text kUnknownParameter{u"The method '%1.%2' has no parameter '%3'."};
inline constexpr Text kWrongType{u"The parameter '%3' of the method '%1.%2' is of another type."};
inline constexpr Text kMissingParameter{u"The method '%1.%2' needs the parameter '%3'."};
inline constexpr Text kMethodNotBuilt{u"This server cannot carry out '%1.%2' yet."};
inline constexpr Text kMethodNotBuiltSummary{u"The operation is not supported by this server."};
inline constexpr Text kInvalidStartMode{
    u"%1 is no start mode of a service. It is 2 (automatic), 3 (manual) or 4 (disabled)."};
inline constexpr Text kServiceMissing{u"The server has no service named '%1'."};
inline constexpr Text kRowTooLong{u"An object of the class '%1' is too large to be sent."};
inline constexpr Text kOtherProtocol{
    u"The console speaks version %1 of the channel's protocol, this server speaks version %2."};
inline constexpr Text kUnexpectedMessage{u"The console sent a message that only a server sends."};
inline constexpr Text kUnknownOption{u"quenvolta-provider: %1"};
inline constexpr Text kNoTerminal{
    u"quenvolta-provider is started by the console; it serves it with --stdio. See --help."};
inline constexpr Text kHelpDescription{u"The server side of Quenvolta Server Manager."};
inline constexpr Text kHelpStdio{u"Serve one console over the standard streams."};
inline constexpr Text kHelpAsVersion{u"Present the classes of the server version <version>."};
inline constexpr Text kHelpData{u"Keep the server's data in <folder>."};
inline constexpr Text kInternalFailure{u"The server failed: %1"};
inline constexpr Text kOutOfMemory{u"The server has not enough memory for this operation."};

} // namespace quenvolta::replies
