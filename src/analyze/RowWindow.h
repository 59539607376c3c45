#pragma once
// Which rows of a table a window shows. It is asked with the number of rows of the table, and with
// how many of them the window shows as a whole.

namespace kvx {

class RowWindow {
  public:
    int First() const { return first_; }

    // Up by n rows, down when n is negative, as far as there are rows. True when it moved.
    bool Scroll(int n, int rows, int visible);
    // No room is left below the last row while there are rows above the first one shown.
    void FillLastPage(int rows, int visible);
    // To a row of the table, or 0.
    void Clamp(int rows);
    void ToTop() { first_ = 0; }
    // Brings the row into the middle, unless it is shown already.
    void Show(int row, int rows, int visible);
    // No row below the last is shown.
    void StayAbove(int rows, int visible);

  private:
    int first_ = 0;
};

}  // namespace kvx
