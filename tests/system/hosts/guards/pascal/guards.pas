{ SPDX-License-Identifier: MIT }
program guards;

{$mode objfpc}{$H+}

uses
  vesk;

const
  O: TPoint = (0, 0, 0);
  P: TPoint = (1, 2, 3);

procedure Expect(Holds: Boolean; const What: AnsiString);
begin
  if Holds then Exit;
  WriteLn(What);
  Halt(1);
end;

var
  Zero: Double = 0;
  Endless: TPoint;

begin
  Expect(OpenVesk('guards'), 'OpenVesk');
  Expect(WriteElb(P, O, P, O, 1) = 0, 'an elbow from its axis');
  Expect(WriteElb(P, O, O, P, 1) = 0, 'an elbow to its axis');
  Expect(not WriteTxt(P, P, P, 1, 1, 1, 0, StringOfChar('a', 513)), 'a text of 513 bytes');
  Expect(not SetHeader('A', 'B', 46656), 'number 46656 fits');
  Expect(SetHeader('A', 'B', 46655), 'number 46655 does not fit');
  WritePnt(P);
  { Infinities are the library's to write, they do not stop the program. }
  Endless[0] := 1 / Zero;
  Endless[1] := -1 / Zero;
  Endless[2] := 0;
  WritePnt(Endless);
  WriteSeg(Endless, Endless);
  CloseVesk;
  Expect(WriteCyl(O, P, 1) = 0, 'a line without a file');
end.
