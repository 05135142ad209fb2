-- Dates and times, to the second, from the year 100 to the year 9999.

CREATE OR REPLACE FUNCTION quor_dated(timestamp) RETURNS timestamp
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF $1 < timestamp '0100-01-01' OR $1 >= timestamp '10000-01-01' THEN PERFORM quor_overflow(); END IF;
  RETURN $1;
END $$;

-- A text in any of the forms that a date is written in.
CREATE OR REPLACE FUNCTION quor_date(bpchar) RETURNS timestamp
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  p text[];
  hour int := 0;
BEGIN
  p := regexp_match(quor_raw($1) COLLATE "C",
    '^ *(\d{4})-(\d{2})-(\d{2})(?: +(\d{1,2}):(\d{2})(?::(\d{2}))?)? *$');
  IF p IS NULL THEN
    p := regexp_match(quor_raw($1) COLLATE "C",
      '^ *(\d{4})(\d{2})(\d{2})(?: +(\d{1,2}):(\d{2})(?::(\d{2}))?)? *$');
  END IF;
  IF p IS NULL THEN
    p := regexp_match(quor_raw($1) COLLATE "C",
      '^ *(\d{1,2})/(\d{1,2})/(\d{4})(?: +(\d{1,2}):(\d{2})(?::(\d{2}))?(?: *([AaPp])[Mm])?)? *$');
    p := ARRAY[p[3], p[1], p[2], p[4], p[5], p[6], p[7]];
  END IF;
  hour := coalesce(p[4], '0')::int;
  IF p[7] IS NOT NULL THEN
    IF hour < 1 OR hour > 12 THEN p := NULL; END IF;
    hour := hour % 12 + CASE WHEN lower(p[7] COLLATE "C") = 'p' COLLATE "C" THEN 12 ELSE 0 END;
  END IF;
  IF p[1] IS NOT NULL AND p[1]::int >= 100 AND hour < 24 AND coalesce(p[6], '0')::int < 60 THEN
    BEGIN
      RETURN make_timestamp(p[1]::int, p[2]::int, p[3]::int, hour, coalesce(p[5], '0')::int,
                            coalesce(p[6], '0')::int);
    EXCEPTION WHEN datetime_field_overflow OR invalid_datetime_format THEN
    END;
  END IF;
  PERFORM quor_fail(format('''%s'' is not a date', quor_raw($1)));
END $$;

CREATE OR REPLACE FUNCTION quor_date_text(timestamp) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN (CASE WHEN $1 = date_trunc('day', $1) THEN to_char($1, 'YYYY-MM-DD')
                  ELSE to_char($1, 'YYYY-MM-DD HH24:MI:SS') END)::bpchar;

CREATE OR REPLACE FUNCTION quor_seconds(timestamp) RETURNS numeric IMMUTABLE STRICT PARALLEL SAFE
  RETURN extract(epoch FROM $1) + 2209161600;

-- Days since 1899-12-30; the time of day counts away from zero.
CREATE OR REPLACE FUNCTION quor_serial(timestamp) RETURNS float8
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN floor(quor_seconds($1) / 86400)::float8
    + CASE WHEN quor_seconds($1) < 0 THEN -1 ELSE 1 END
      * (quor_seconds($1) - floor(quor_seconds($1) / 86400) * 86400)::float8 / 86400;

CREATE OR REPLACE FUNCTION quor_later(timestamp, numeric) RETURNS timestamp
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF abs($2) > 1e12 THEN PERFORM quor_overflow(); END IF;
  RETURN quor_dated($1 + make_interval(secs => $2::float8));
END $$;

CREATE OR REPLACE FUNCTION quor_date_add(bigint, timestamp, text) RETURNS timestamp
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  months int := CASE $3 WHEN 'year' THEN 12 WHEN 'quarter' THEN 3 WHEN 'month' THEN 1 END;
BEGIN
  IF abs($1) > 1000000000000 THEN PERFORM quor_overflow(); END IF;
  IF months IS NOT NULL THEN
    IF abs($1) > 200000 THEN PERFORM quor_overflow(); END IF;
    RETURN quor_dated($2 + make_interval(months => ($1 * months)::int));
  END IF;
  RETURN quor_later($2, $1::numeric * CASE $3 WHEN 'hour' THEN 3600 WHEN 'minute' THEN 60
    WHEN 'second' THEN 1 WHEN 'week' THEN 604800 ELSE 86400 END);
END $$;

CREATE OR REPLACE FUNCTION quor_date_diff(timestamp, timestamp, text) RETURNS bigint
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  a int := extract(year FROM $1) * 12 + extract(month FROM $1) - 1;
  b int := extract(year FROM $2) * 12 + extract(month FROM $2) - 1;
  c numeric := quor_seconds($1);
  d numeric := quor_seconds($2);
BEGIN
  RETURN quor_whole(CASE $3
    WHEN 'year' THEN b / 12 - a / 12
    WHEN 'quarter' THEN b / 3 - a / 3
    WHEN 'month' THEN b - a
    WHEN 'day' THEN floor(d / 86400) - floor(c / 86400)
    WHEN 'weekday' THEN trunc((floor(d / 86400) - floor(c / 86400)) / 7)
    WHEN 'week' THEN floor((floor(d / 86400) - 1) / 7) - floor((floor(c / 86400) - 1) / 7)
    WHEN 'hour' THEN floor(d / 3600) - floor(c / 3600)
    WHEN 'minute' THEN floor(d / 60) - floor(c / 60)
    ELSE d - c END, -2147483648, 2147483647);
END $$;

-- (year, month, day), each of which may lie outside its range.
CREATE OR REPLACE FUNCTION quor_date_of(bigint, bigint, bigint) RETURNS timestamp
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  year bigint := $1 + CASE WHEN $1 BETWEEN 0 AND 29 THEN 2000 WHEN $1 BETWEEN 30 AND 99 THEN 1900 ELSE 0 END;
  month bigint := year * 12 + $2 - 1;
BEGIN
  IF month < 0 OR month > 200000 OR abs($3) > 10000000 THEN PERFORM quor_overflow(); END IF;
  RETURN quor_dated(make_timestamp(2000, 1, 1, 0, 0, 0)
    + make_interval(months => (month - 24000)::int) + make_interval(days => ($3 - 1)::int));
END $$;

-- (date, days and fraction of a day)
CREATE OR REPLACE FUNCTION quor_add_days(timestamp, float8) RETURNS timestamp
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF NOT abs($2) <= 1e7 THEN PERFORM quor_overflow(); END IF;
  RETURN quor_later($1, (sign($2) * floor(abs($2 * 86400) + 0.5))::bigint::numeric);
END $$;

CREATE OR REPLACE FUNCTION quor_days_between(timestamp, timestamp) RETURNS float8
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN (quor_seconds($1) - quor_seconds($2))::float8 / 86400;
