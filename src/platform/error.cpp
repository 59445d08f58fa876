#include "platform/error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace ledrix {
namespace {

struct Description {
  int number;
  const char* text;
};

constexpr std::array<Description, 21> kDescriptions = {{
    {ENOENT, "ファイルが見つかりません"},
    {EACCES, "アクセスが拒否されました"},
    {EPERM, "操作が許可されていません"},
    {EISDIR, "フォルダです"},
    {ENOTDIR, "パスの途中にフォルダでないものが有ります"},
    {ENOSPC, "ディスクの空き容量が足りません"},
    {EDQUOT, "ディスクの割り当て容量を超えました"},
    {EFBIG, "ファイルが大きすぎます"},
    {EROFS, "書き込み禁止のファイルシステムです"},
    {ENAMETOOLONG, "ファイル名が長すぎます"},
    {ELOOP, "シンボリックリンクが循環しています"},
    {EMFILE, "開いているファイルが多すぎます"},
    {ENFILE, "開いているファイルが多すぎます"},
    {EIO, "入出力エラーが発生しました"},
    {ENOMEM, "メモリが足りません"},
    {ENXIO, "デバイスが有りません"},
    {ENODEV, "デバイスが有りません"},
    {EBUSY, "使用中です"},
    {EINTR, "中断されました"},
    {EEXIST, "同じ名前のファイルが既に存在します"},
    {ETXTBSY, "実行中のプログラムです"},
}};

std::string DescribeSystemError(int number) {
  const auto* const found =
      std::find_if(kDescriptions.begin(), kDescriptions.end(),
                   [number](const Description& d) { return d.number == number; });
  return found != kDescriptions.end() ? found->text : std::strerror(number);
}

}  // namespace

std::string DescribeError(const Error& error) {
  switch (error.kind) {
    case ErrorKind::kSystem:
      return DescribeSystemError(error.system_number);
    case ErrorKind::kFolder:
      return "ファイルではなくフォルダです";
    case ErrorKind::kNotAFile:
      return "ファイルではなくデバイスまたはソケットです";
    case ErrorKind::kPipe:
      return "ファイルではなくパイプです";
    case ErrorKind::kInputAsOutput:
      return "入力ファイルと同じファイルには出力できません";
    case ErrorKind::kOutputTwice:
      return "他の出力ファイルと同じファイルには出力できません";
    case ErrorKind::kFolderIsLocked:
      return "フォルダに書き込めないため、変換用の写しを作れません";
    case ErrorKind::kWrittenByJob:
      return "この実行で既に出力したファイルです";
    case ErrorKind::kChanged:
      return "処理中に変更されたか、なくなりました";
    case ErrorKind::kCharset:
      return "この文字コードは使用できません";
  }
  return {};
}

}  // namespace ledrix
