#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/clearance/clr_Check.h"
#include "host/cli/cli_Steps.h"
#include "host/model/hst_Part.h"

/// A clearance check as it is printed, drawn and saved: the same whether it was just made or comes
/// from a database. The parts outlive the view.
class cli_ClearanceView {
  public:
    /// Of a check just made; the first `labelCount` findings get a label and an arrow, laid out for
    /// the picture from `view`.
    cli_ClearanceView(const std::vector<hst_Part>& checkedParts, clr_Report checkReport,
                      std::size_t labelCount, g3d_SavedViewIdEnum view);
    /// Of a saved one. Throws `hst_Error`, which names the file, when its pairs are not those of
    /// the parts.
    [[nodiscard]] static cli_ClearanceView Load(const std::string& file,
                                                const std::vector<hst_Part>& parts,
                                                const hst_SavedCheck& saved);

    [[nodiscard]] const clr_Report& Report() const noexcept { return report; }
    [[nodiscard]] hst_SavedCheck ToSave() const;
    void Print(bool json) const;
    /// The bytes of the picture.
    [[nodiscard]] std::string Draw(g3d_SavedViewIdEnum view, pic_Format format) const;

  private:
    cli_ClearanceView(const std::vector<hst_Part>& checkedParts, clr_Report checkReport,
                      const annC_AnnotationContainer& labels);

    const std::vector<hst_Part>* parts;
    clr_Report report;
    annC_AnnotationContainer annotations;
};
