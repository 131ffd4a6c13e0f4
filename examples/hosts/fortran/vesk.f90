! SPDX-License-Identifier: MIT
! The thirteen functions for Fortran.
!
! A point is a value of type(point), three numbers side by side: it cannot be of another
! length, and it is null only if it is a pointer or an allocatable without a target, which
! must not be passed. An exception of the library ends the program, so write_elb asks first.
module vesk
  use, intrinsic :: iso_c_binding, only: c_char, c_double, c_f_pointer, c_int, c_loc, &
                                         c_null_char, c_null_ptr, c_ptr, c_size_t
  implicit none
  private
  public :: point, open_vesk, close_vesk, set_header, write_pnt, write_seg, write_tri, &
            write_qua, write_txt, write_box, write_red, write_cyl, write_con, write_tor, write_elb, &
            reason_text

  type, bind(C) :: point
    real(c_double) :: x, y, z
  end type point

  ! name= keeps the capitals, which Fortran would lower.
  interface
    function vk_open(name) bind(C, name="vk_openVesk") result(opened)
      import :: c_int, c_ptr
      type(c_ptr), value :: name  ! null closes
      integer(c_int) :: opened
    end function vk_open

    function vk_header(a, b, n) bind(C, name="vk_setHeader") result(fits)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: a(*), b(*)
      integer(c_int), value :: n
      integer(c_int) :: fits
    end function vk_header

    ! Where the C library keeps the reason of a failure; "_errno" on Windows.
    function c_errno() bind(C, name="__errno_location") result(address)
      import :: c_ptr
      type(c_ptr) :: address
    end function c_errno

    function c_strerror(reason) bind(C, name="strerror") result(text)
      import :: c_int, c_ptr
      integer(c_int), value :: reason
      type(c_ptr) :: text
    end function c_strerror

    function c_strlen(text) bind(C, name="strlen") result(length)
      import :: c_ptr, c_size_t
      type(c_ptr), value :: text
      integer(c_size_t) :: length
    end function c_strlen

    subroutine write_pnt(p) bind(C, name="vk_writePnt")
      import :: point
      type(point), intent(in) :: p
    end subroutine write_pnt

    subroutine write_seg(p1, p2) bind(C, name="vk_writeSeg")
      import :: point
      type(point), intent(in) :: p1, p2
    end subroutine write_seg

    subroutine write_tri(p1, p2, p3) bind(C, name="vk_writeTri")
      import :: point
      type(point), intent(in) :: p1, p2, p3
    end subroutine write_tri

    subroutine write_qua(p1, p2, p3, p4) bind(C, name="vk_writeQua")
      import :: point
      type(point), intent(in) :: p1, p2, p3, p4
    end subroutine write_qua

    subroutine vk_txt(p1, p2, p3, d1, d2, i1, i2, s) bind(C, name="vk_writeTxt")
      import :: c_char, c_double, c_int, point
      type(point), intent(in) :: p1, p2, p3
      real(c_double), value :: d1, d2
      integer(c_int), value :: i1, i2
      character(kind=c_char), intent(in) :: s(*)
    end subroutine vk_txt

    subroutine write_box(p0, p1, p2, p3) bind(C, name="vk_writeBox")
      import :: point
      type(point), intent(in) :: p0, p1, p2, p3
    end subroutine write_box

    subroutine write_red(p0, p1, p2, p3, p4, p5, p6, p7) bind(C, name="vk_writeRed")
      import :: point
      type(point), intent(in) :: p0, p1, p2, p3, p4, p5, p6, p7
    end subroutine write_red

    function write_cyl(p1, p2, d) bind(C, name="vk_writeCyl") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p1, p2
      real(c_double), value :: d
      integer(c_int) :: lines
    end function write_cyl

    function write_con(p1, p2, d1, d2) bind(C, name="vk_writeCon") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p1, p2
      real(c_double), value :: d1, d2
      integer(c_int) :: lines
    end function write_con

    function write_tor(p0, p1, p2, d) bind(C, name="vk_writeTor") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p0, p1, p2
      real(c_double), value :: d
      integer(c_int) :: lines
    end function write_tor

    function vk_elb(p0, p1, p2, p3, d) bind(C, name="vk_writeElb") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p0, p1, p2, p3
      real(c_double), value :: d
      integer(c_int) :: lines
    end function vk_elb
  end interface

contains

  ! Opens "vesk" // name // ".dat" and closes what is open; .false. if the system refused.
  logical function open_vesk(name)
    character(len=*), intent(in) :: name
    character(kind=c_char, len=:), allocatable, target :: text
    text = trim(name) // c_null_char
    open_vesk = vk_open(c_loc(text)) == 1
  end function open_vesk

  ! Completes the file. Returns 0, or the reason why the system did not take all of it, a
  ! full disk for one: the file is not whole then. reason_text says it in words.
  integer function close_vesk()
    integer(c_int), pointer :: errno
    integer(c_int) :: opened
    call c_f_pointer(c_errno(), errno)
    errno = 0
    opened = vk_open(c_null_ptr)
    close_vesk = errno
  end function close_vesk

  function reason_text(reason) result(text)
    integer, intent(in) :: reason
    character(len=:), allocatable :: text
    character(kind=c_char), pointer :: letters(:)
    type(c_ptr) :: address
    integer :: i
    address = c_strerror(int(reason, c_int))
    call c_f_pointer(address, letters, [c_strlen(address)])
    allocate (character(len=size(letters)) :: text)
    do i = 1, size(letters)
      text(i:i) = letters(i)
    end do
  end function reason_text

  ! .false. if n is not within 0 to 46655; its high digits are lost then.
  logical function set_header(a, b, n)
    character(len=*), intent(in) :: a, b
    integer, intent(in) :: n
    set_header = vk_header(a // c_null_char, b // c_null_char, int(n, c_int)) == 1
  end function set_header

  ! Blanks at the end of the text are not written; more than 512 bytes do not fit.
  subroutine write_txt(p1, p2, p3, d1, d2, i1, i2, s)
    type(point), intent(in) :: p1, p2, p3
    real(c_double), intent(in) :: d1, d2
    integer, intent(in) :: i1, i2
    character(len=*), intent(in) :: s
    if (len_trim(s) > 512) error stop "write_txt: more than 512 bytes"
    call vk_txt(p1, p2, p3, d1, d2, int(i1, c_int), int(i2, c_int), trim(s) // c_null_char)
  end subroutine write_txt

  ! Returns 0 and writes nothing if p2 or p3 is at p0: the bend has no direction then.
  integer function write_elb(p0, p1, p2, p3, d)
    type(point), intent(in) :: p0, p1, p2, p3
    real(c_double), intent(in) :: d
    write_elb = 0
    if (distance(p0, p2) < 1e-12_c_double .or. distance(p0, p3) < 1e-12_c_double) return
    write_elb = vk_elb(p0, p1, p2, p3, d)
  end function write_elb

  real(c_double) function distance(a, b)
    type(point), intent(in) :: a, b
    distance = norm2([a%x - b%x, a%y - b%y, a%z - b%z])
  end function distance

end module vesk
