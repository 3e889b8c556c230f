#include "QXDirList.h"

#include "Dialogs.h"
#include "FileUtils.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "QXU_File.h"

#include <exception>
#include <memory>

namespace {
const bool classKnown = RegisterClass(ComponentClassOf<TQXDirList>());
} // namespace

TDirInfo::TDirInfo() = default;

TDirInfo::~TDirInfo() = default;

TQXDirList::TQXDirList(QObject* owner) : TComponent(owner) {
    // Directories elsewhere may share their last name; each keeps its own line.
    m_dirList.SetDuplicates(dupAccept);
}

TQXDirList::~TQXDirList() {
    ClearDirList();
}

void TQXDirList::SetFileList(TStringList* value) {
    m_fileList.Assign(value);
}

void TQXDirList::ClearDirList() {
    for (int i = 0; i < m_dirList.Count(); ++i) {
        delete static_cast<TDirInfo*>(m_dirList.Objects(i));
        m_dirList.PutObject(i, nullptr);
    }
    m_dirList.Clear();
}

void TQXDirList::Update() {
    try {
        ClearDirList();
        m_dirList.SetSorted(true);
        m_fileList.SetSorted(true);
        const int count = m_fileList.Count();
        int i = 0;
        while (i < count - 1) {
            auto info = std::make_unique<TDirInfo>();
            info->Path = ExtractFilePath(m_fileList[i]);
            while (i < count && ExtractFilePath(m_fileList[i]) == info->Path) {
                info->Files.Add(ExtractFileName(m_fileList[i]));
                ++i;
            }
            m_dirList.AddObject(qxtDirName(info->Path), info.get());
            info.release();
        }
    } catch (const std::exception&) {
        ShowMessage(QStringLiteral("Fehler beim Updaten"));
    }
}

TStringList* TQXDirList::GetFiles(int Index) {
    return &static_cast<TDirInfo*>(m_dirList.Objects(Index))->Files;
}

void QXDirList::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXDirList");
}
